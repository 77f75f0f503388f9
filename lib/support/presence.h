// Whether a file is there.
#pragma once

#include "support/trouble.h"

#include <unistd.h>

namespace nasshare {

// False also when nobody can tell, which is noted as trouble.
inline bool is_there(const char *path) {
  if (access(path, F_OK) == 0) {
    return true;
  }
  note_file_error();
  return false;
}

} // namespace nasshare
