// Whether a file is there.
#pragma once

#include "base/watch.h"

#include <unistd.h>

namespace nasshare {

// False also when nobody can tell, which is noted.
inline bool exists_or_note(const char *path) {
  if (access(path, F_OK) == 0) {
    return true;
  }
  note_file_error();
  return false;
}

} // namespace nasshare
