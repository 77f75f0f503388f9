// Catching output, and running functions and programs in processes of their own.
#include "output.h"

#include "files.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {

namespace {

int memory_file() {
  const int file = ::memfd_create("output", MFD_CLOEXEC);
  files::require(file >= 0, "memfd_create");
  return file;
}

int exit_status(pid_t child) {
  int status = 0;
  files::require(::waitpid(child, &status, 0) == child, "waitpid");
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

[[noreturn]] void run_and_tell(const std::function<void()> &function, int told) {
  function();
  std::fflush(nullptr);
  const bool written = ::write(told, "r", 1) == 1;
  ::_exit(written ? 0 : 1);
}

} // namespace

Captured::Captured() : out_(divert(STDOUT_FILENO)), err_(divert(STDERR_FILENO)) {}

Captured::~Captured() {
  stop();
  ::close(out_.file);
  ::close(err_.file);
}

Captured::Stream Captured::divert(int number) {
  std::fflush(nullptr);
  const Stream stream{number, ::fcntl(number, F_DUPFD_CLOEXEC, 0), memory_file()};
  files::require(stream.saved >= 0 && ::dup2(stream.file, number) == number, "dup2");
  return stream;
}

void Captured::stop() {
  if (stopped_) {
    return;
  }
  stopped_ = true;
  std::fflush(nullptr);
  for (const Stream &stream : {out_, err_}) {
    ::dup2(stream.saved, stream.number);
    ::close(stream.saved);
  }
}

std::string Captured::content(const Stream &stream) {
  std::string text;
  std::array<char, 4096> part{};
  ssize_t length = 0;
  while ((length = ::pread(stream.file, part.data(), part.size(), static_cast<off_t>(text.size()))) > 0) {
    text.append(part.data(), static_cast<std::size_t>(length));
  }
  return text;
}

std::string Captured::out() {
  stop();
  return content(out_);
}

std::string Captured::err() {
  stop();
  return content(err_);
}

std::string output_of(const std::function<void()> &function) {
  Captured captured;
  function();
  return captured.out();
}

Ended run_to_exit(const std::function<void()> &function) {
  const int told = memory_file();
  Ended ended;
  {
    Captured captured;
    const pid_t child = ::fork();
    files::require(child >= 0, "fork");
    if (child == 0) {
      run_and_tell(function, told);
    }
    ended.status = exit_status(child);
    ended.out = captured.out();
    ended.err = captured.err();
  }
  char mark = 0;
  ended.returned = ::pread(told, &mark, 1, 0) == 1;
  ::close(told);
  return ended;
}

Ended run_program(const std::vector<std::string> &words) {
  return run_to_exit([&words] {
    // The program itself may be built with AddressSanitizer, whose library then does not come first.
    ::setenv("LD_PRELOAD", STAND_INS, 1);
    ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
    const std::vector<char *> arguments = files::arguments_of(words);
    ::execvp(arguments[0], arguments.data());
    std::perror(arguments[0]);
    ::_exit(127);
  });
}

Ended shell(const std::string &line) {
  return run_to_exit([&line] {
    ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
    ::_exit(127);
  });
}

} // namespace nasshare::tests
