// What a piece of code writes to standard output and standard error, its child processes included.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nasshare::tests {

// Catches both streams from here until stop() or its end.
class Captured {
public:
  Captured();
  ~Captured();
  Captured(const Captured &) = delete;
  Captured &operator=(const Captured &) = delete;

  std::string out(); // standard output; stops
  std::string err(); // standard error; stops
  void stop();

private:
  struct Stream {
    int number;
    int saved;
    int file;
  };
  static Stream divert(int number);
  static std::string content(const Stream &stream);

  bool stopped_ = false;
  Stream out_;
  Stream err_;
};

// What the function prints on standard output.
std::string output_of(const std::function<void()> &function);

struct Ended {
  bool returned = false; // the function came back instead of ending its process
  int status = -1;       // exit status; 128 and the signal's number after a signal
  std::string out;
  std::string err;
};

// Runs the function in a child process, for operations that end their process.
Ended run_to_exit(const std::function<void()> &function);

// Runs a program, found on PATH, with the kernel's stand-ins loaded.
Ended run_program(const std::vector<std::string> &words);

// Runs a line of the shell's language.
Ended shell(const std::string &line);

} // namespace nasshare::tests
