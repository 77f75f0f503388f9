// Lines of a file or of a command's output, fetched one by one. A line longer than the buffer comes in
// pieces, each a line of its own. Trailing white-space and control characters are gone.
#pragma once

#include "support/owners.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace nasshare {

// Opens a file for reading; trouble in doing so is noted.
FILE *open_lines(const char *path);

// The standard output of a shell command. A command that a signal ended may have left out lines, which is
// noted as trouble; its exit status says nothing about the lines.
class CommandOutput {
public:
  explicit CommandOutput(const char *command);
  CommandOutput(const CommandOutput &) = delete;
  CommandOutput &operator=(const CommandOutput &) = delete;
  ~CommandOutput();

  explicit operator bool() const { return static_cast<bool>(pipe_); }
  [[nodiscard]] FILE *get() const { return pipe_.get(); }
  // The status as pclose() has it.
  int close();

private:
  Pipe pipe_;
};

bool fetch_line(FILE *stream, char *buffer, int size);

template <int Width> class Lines {
public:
  explicit Lines(FILE *stream) : stream_(stream) {}
  bool next() { return fetch_line(stream_, buffer_.data(), Width); }
  [[nodiscard]] std::string_view line() const { return buffer_.data(); }

private:
  FILE *stream_;
  std::array<char, Width> buffer_{};
};

using FileLines = Lines<4096>;
using CommandLines = Lines<512>;

} // namespace nasshare
