#include "support/lines.h"

#include "nasshare/support.h"
#include "support/trouble.h"

namespace nasshare {

FILE *open_lines(const char *path) {
  FILE *file = std::fopen(path, "re");
  if (file == nullptr) {
    note_trouble_of_errno();
  }
  return file;
}

FILE *open_output(const char *command) {
  FILE *output = popen(command, "re");
  if (output == nullptr) {
    note_trouble();
  }
  return output;
}

bool fetch_line(FILE *stream, char *buffer, int size) {
  if (stream == nullptr) {
    return false;
  }
  if (std::fgets(buffer, size, stream) == nullptr) {
    if (std::ferror(stream) != 0) {
      note_trouble();
    }
    return false;
  }
  remove_0D_0A(buffer);
  return true;
}

} // namespace nasshare
