// Reading and writing descriptors: a signal or a short count ends nothing.
#include "base/descriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace nasshare {

ssize_t read_some(int fd, void *buffer, std::size_t length) {
  ssize_t count = 0;
  do {
    count = read(fd, buffer, length);
  } while (count < 0 && errno == EINTR);
  return count;
}

ssize_t write_some(int fd, const void *buffer, std::size_t length) {
  ssize_t count = 0;
  do {
    count = write(fd, buffer, length);
  } while (count < 0 && errno == EINTR);
  return count;
}

ssize_t read_full(int fd, void *buffer, std::size_t length) {
  auto *const bytes = static_cast<char *>(buffer);
  std::size_t total = 0;
  while (total < length) {
    const auto count = read_some(fd, bytes + total, length - total);
    if (count < 0 && total == 0) {
      return count;
    }
    if (count <= 0) {
      break;
    }
    total += static_cast<std::size_t>(count);
  }
  return static_cast<ssize_t>(total);
}

ssize_t write_full(int fd, const void *buffer, std::size_t length) {
  const auto *const bytes = static_cast<const char *>(buffer);
  std::size_t total = 0;
  while (total < length) {
    const auto count = write_some(fd, bytes + total, length - total);
    if (count < 0 && total == 0) {
      return count;
    }
    if (count < 0) {
      break;
    }
    total += static_cast<std::size_t>(count);
  }
  return static_cast<ssize_t>(total);
}

bool write_all(int fd, std::string_view text) {
  return write_full(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

Descriptor beyond_standard(Descriptor file) {
  const bool is_standard = file && file.get() <= STDERR_FILENO;
  return is_standard ? Descriptor(fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) : std::move(file);
}

} // namespace nasshare
