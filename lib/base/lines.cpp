// Lines of a file or of a command's output, and when one of them may be missing.
#include "base/lines.h"

#include "base/text.h"

#include <cerrno>
#include <csignal>
#include <sys/wait.h>

namespace nasshare {
namespace {

// The shell that starts a command tells of a signal with 128 and its number.
bool was_killed(int status) {
  return WIFSIGNALED(status) ||
         (WIFEXITED(status) && WEXITSTATUS(status) > 128 && WEXITSTATUS(status) <= 128 + SIGRTMAX);
}

} // namespace

bool fetch_line_or_note(FILE *stream, std::span<char> buffer) {
  if (stream == nullptr) {
    return false;
  }
  if (std::fgets(buffer.data(), static_cast<int>(buffer.size()), stream) == nullptr) {
    if (std::ferror(stream) != 0) {
      note_file_error();
    }
    return false;
  }
  place(buffer, without_line_end(view(buffer)));
  return true;
}

FileLines::FileLines(const char *path) : file_(std::fopen(path, "re")), lines_(file_.get()) {
  if (!file_) {
    note_file_error();
  }
}

CommandLines::CommandLines(const char *command, const Trouble &when_killed)
    : pipe_(popen(command, "re")), lines_(pipe_.get()), when_killed_(when_killed) {
  if (!pipe_) {
    note_doubt();
  }
}

int CommandLines::close() {
  if (!pipe_) {
    return -1;
  }
  const int status = pipe_.close();
  // A program that ignores SIGCHLD never learns how its children end.
  const bool is_unknown = status == -1 && errno != ECHILD;
  if (is_unknown || (status != -1 && was_killed(status))) {
    note(when_killed_);
  }
  return status;
}

} // namespace nasshare
