// A program that runs while its object lives.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace nasshare::tests {

class RunningProgram {
public:
  // The process bears the file's name.
  RunningProgram(const std::string &file, const std::vector<std::string> &words);
  ~RunningProgram();
  RunningProgram(const RunningProgram &) = delete;
  RunningProgram &operator=(const RunningProgram &) = delete;

  [[nodiscard]] bool is_running() const;

private:
  pid_t process_;
};

// A program in a file of that name that only waits.
RunningProgram waiting_program(const std::string &file);

} // namespace nasshare::tests
