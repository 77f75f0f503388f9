// Reading and writing descriptors, for callers in C.
#include "base/descriptors.h"
#include "nasshare/support.h"

using namespace nasshare;

ssize_t safe_read(int fd, void *buffer, size_t length) {
  return read_some(fd, buffer, length);
}

ssize_t safe_write(int fd, const void *buffer, size_t length) {
  return write_some(fd, buffer, length);
}

ssize_t full_read(int fd, void *buffer, size_t length) {
  return read_full(fd, buffer, length);
}

ssize_t full_write(int fd, const void *buffer, size_t length) {
  return write_full(fd, buffer, length);
}
