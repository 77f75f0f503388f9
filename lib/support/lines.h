// Lines of a file or of a command's output, fetched one by one. A line longer than the buffer comes in
// pieces, each a line of its own. Trailing white-space and control characters are gone.
#pragma once

#include <array>
#include <cstdio>
#include <string_view>

namespace nasshare {

// Opens a file, or a command's output, for reading; trouble in doing so is noted.
FILE *open_lines(const char *path);
FILE *open_output(const char *command);

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
