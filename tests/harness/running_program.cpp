// Starting a program and waiting until it runs.
#include "running_program.h"

#include "appliance.h"
#include "files.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace nasshare::tests {

namespace {

constexpr std::size_t longest_process_name = 15;

// An emulated processor's posix_spawn may return before the program runs.
pid_t start(const std::string &file, const std::vector<std::string> &words) {
  const std::vector<char *> arguments = files::arguments_of(words);
  pid_t child = 0;
  errno = ::posix_spawn(&child, file.c_str(), nullptr, nullptr, arguments.data(), environ);
  files::require(errno == 0, file);
  const std::string name = std::filesystem::path(file).filename().string().substr(0, longest_process_name);
  const std::string name_file = "/proc/" + std::to_string(child) + "/comm";
  for (int tries = 0; tries < 2000; ++tries) {
    if (read_file(name_file) == name + "\n") {
      return child;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  throw std::runtime_error(file + " does not run");
}

} // namespace

RunningProgram::RunningProgram(const std::string &file, const std::vector<std::string> &words)
    : process_(start(file, words)) {}

RunningProgram::~RunningProgram() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

bool RunningProgram::is_running() const {
  return ::waitpid(process_, nullptr, WNOHANG) == 0;
}

RunningProgram waiting_program(const std::string &file) {
  if (!exists(file)) {
    files::write(file, read_file("/bin/sleep"), 0755);
  }
  return {file, {"sleep", "600"}};
}

} // namespace nasshare::tests
