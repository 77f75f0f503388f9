// Whether two names or descriptors lead to one file.
#pragma once

#include <sys/stat.h>

namespace nasshare {

// By what stat(2) and its like say of them.
inline bool is_same_file(const struct stat &a, const struct stat &b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace nasshare
