// Lines of a file or of a command's output, one by one. A line longer than the buffer comes in pieces, each a
// line of its own. White-space and control characters at a line's end are gone.
#pragma once

#include "base/owners.h"
#include "base/watch.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <span>
#include <string_view>

namespace nasshare {

// The next line, without its end; false at the end of the stream and without a stream. An error in reading is
// noted.
[[nodiscard]] bool fetch_line_or_note(FILE *stream, std::span<char> buffer);

// The lines of a stream as a range, to be walked once; each is valid until the next.
template <std::size_t Width> class Lines {
public:
  class Iterator {
  public:
    using value_type = std::string_view;
    using difference_type = std::ptrdiff_t;

    explicit Iterator(Lines *lines) : lines_(lines) {}
    std::string_view operator*() const { return lines_->buffer_.data(); }
    Iterator &operator++() {
      lines_->fetch();
      return *this;
    }
    void operator++(int) { lines_->fetch(); }
    bool operator==(std::default_sentinel_t /*end*/) const { return lines_->is_over_; }

  private:
    Lines *lines_;
  };

  explicit Lines(FILE *stream) : stream_(stream) {}
  Lines(const Lines &) = delete;
  Lines &operator=(const Lines &) = delete;

  [[nodiscard]] Iterator begin() {
    fetch();
    return Iterator(this);
  }
  [[nodiscard]] static std::default_sentinel_t end() { return {}; }

private:
  void fetch() { is_over_ = !fetch_line_or_note(stream_, buffer_); }

  FILE *stream_;
  std::array<char, Width> buffer_{};
  bool is_over_ = false;
};

// The lines of a file; none when it cannot be opened, which is noted.
class FileLines {
public:
  explicit FileLines(const char *path);

  [[nodiscard]] bool is_open() const { return static_cast<bool>(file_); }
  [[nodiscard]] auto begin() { return lines_.begin(); }
  [[nodiscard]] static auto end() { return std::default_sentinel; }
  // The closing status, as fclose() has it; -1 when nothing is open.
  int close() { return file_.close(); }

private:
  File file_;
  Lines<4096> lines_;
};

// The lines that a shell command prints. That a command cannot be started is doubt, and trouble of the given
// kind that a signal ended it: it may have left out lines. Its exit status says nothing about the lines.
class CommandLines {
public:
  explicit CommandLines(const char *command, const Trouble &when_killed = {.lacks_some = true});
  CommandLines(const CommandLines &) = delete;
  CommandLines &operator=(const CommandLines &) = delete;
  ~CommandLines() { close(); }

  [[nodiscard]] bool has_started() const { return static_cast<bool>(pipe_); }
  [[nodiscard]] auto begin() { return lines_.begin(); }
  [[nodiscard]] static auto end() { return std::default_sentinel; }
  // The status as pclose() has it; -1 when nothing is open.
  int close();

private:
  Pipe pipe_;
  Lines<512> lines_;
  Trouble when_killed_;
};

} // namespace nasshare
