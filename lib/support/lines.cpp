#include "support/lines.h"

#include "nasshare/support.h"
#include "support/trouble.h"

#include <cerrno>
#include <csignal>
#include <sys/wait.h>

namespace nasshare {

FILE *open_lines(const char *path) {
  FILE *file = std::fopen(path, "re");
  if (file == nullptr) {
    note_file_error();
  }
  return file;
}

CommandOutput::CommandOutput(const char *command) : pipe_(popen(command, "re")) {
  if (!pipe_) {
    note_trouble();
  }
}

CommandOutput::~CommandOutput() {
  close();
}

namespace {

// The shell that starts a command tells of a signal with 128 and its number.
bool was_killed(int status) {
  return WIFSIGNALED(status) ||
         (WIFEXITED(status) && WEXITSTATUS(status) > 128 && WEXITSTATUS(status) <= 128 + SIGRTMAX);
}

} // namespace

int CommandOutput::close() {
  if (!pipe_) {
    return -1;
  }
  int status = pipe_.close();
  // A program that ignores SIGCHLD never learns how its children end.
  bool unknown = status == -1 && errno != ECHILD;
  if (unknown || (status != -1 && was_killed(status))) {
    note_missing();
  }
  return status;
}

bool fetch_line(FILE *stream, char *buffer, int size) {
  if (stream == nullptr) {
    return false;
  }
  if (std::fgets(buffer, size, stream) == nullptr) {
    if (std::ferror(stream) != 0) {
      note_file_error();
    }
    return false;
  }
  remove_0D_0A(buffer);
  return true;
}

} // namespace nasshare
