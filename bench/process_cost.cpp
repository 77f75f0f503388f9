// What a whole process costs:
//
//   bench-process-cost ROW FLOORS COUNT COMMAND [ARGUMENT]...
//
// runs the command COUNT times without its output and prints a line of JSON with the nanoseconds of each run.
// Own CPU time is what the kernel counted for the process itself, that of its children apart.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace nasshare::bench {
namespace {

struct Cost {
  std::int64_t own;
  std::int64_t wall;
  std::int64_t children;
};

void require(bool condition, const char *what) {
  if (!condition) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

pid_t start(char **command) {
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  errno = ::posix_spawnp(&child, command[0], &actions, nullptr, command, environ);
  require(errno == 0, command[0]);
  ::posix_spawn_file_actions_destroy(&actions);
  return child;
}

// A process that has ended and was not waited for still tells.
std::int64_t own_nanoseconds(pid_t child) {
  siginfo_t info = {};
  require(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) == 0, "waitid");
  std::ifstream schedstat("/proc/" + std::to_string(child) + "/schedstat");
  std::int64_t nanoseconds = -1;
  schedstat >> nanoseconds;
  require(nanoseconds >= 0, "schedstat");
  return nanoseconds;
}

std::int64_t nanoseconds(const timeval &time) {
  return (std::int64_t{time.tv_sec} * 1'000'000 + time.tv_usec) * 1'000;
}

Cost cost_of(char **command) {
  using Clock = std::chrono::steady_clock;
  const auto start_time = Clock::now();
  const pid_t child = start(command);
  const std::int64_t own = own_nanoseconds(child);
  const std::chrono::nanoseconds wall = Clock::now() - start_time;
  int status = 0;
  rusage usage = {};
  require(::wait4(child, &status, 0, &usage) == child, "wait4");
  if (status != 0) {
    throw std::runtime_error(std::string(command[0]) + " failed");
  }
  const std::int64_t all = nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime);
  return {own, wall.count(), std::max(all - own, std::int64_t{0})}; // one is rounded, the other is not
}

void print_all(const char *name, const std::vector<Cost> &costs, std::int64_t Cost::*part) {
  std::printf(", \"%s\": [", name);
  const char *separator = "";
  for (const Cost &cost : costs) {
    std::printf("%s%lld", separator, static_cast<long long>(cost.*part));
    separator = ", ";
  }
  std::printf("]");
}

int run(char **arguments) {
  std::vector<Cost> costs(std::stoul(arguments[2]));
  std::ranges::generate(costs, [&] { return cost_of(arguments + 3); });
  std::printf("{\"row\": \"%s\", \"floors\": \"%s\"", arguments[0], arguments[1]);
  print_all("own", costs, &Cost::own);
  print_all("wall", costs, &Cost::wall);
  print_all("children", costs, &Cost::children);
  std::puts("}");
  return 0;
}

} // namespace
} // namespace nasshare::bench

// NOLINTNEXTLINE(bugprone-exception-escape): an exception ends the program as it should
int main(int argc, char **argv) {
  if (argc < 5) {
    std::fputs("usage: bench-process-cost ROW FLOORS COUNT COMMAND [ARGUMENT]...\n", stderr);
    return 2;
  }
  return nasshare::bench::run(argv + 1);
}
