// A regular file, read whole: never a part of it, and never a pipe, which might keep the reader waiting.
#include "base/whole_file.h"

#include "base/descriptors.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>

namespace nasshare {

WholeFile::WholeFile(const char *path)
    : WholeFile(Descriptor(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK))) {}

WholeFile::WholeFile(const Descriptor &file) : error_(read(file)) {
  if (error_ != 0) {
    size_ = 0;
  }
}

int WholeFile::read(const Descriptor &file) {
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0) {
    return errno;
  }
  if (!S_ISREG(status.st_mode) || status.st_size > INT_MAX) {
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  bytes_.reset(static_cast<char *>(std::malloc(size + 1)));
  if (!bytes_) {
    return ENOMEM;
  }
  ssize_t count = -1;
  while (size_ < size && (count = read_some(file.get(), bytes_.get() + size_, size - size_)) > 0) {
    size_ += static_cast<std::size_t>(count);
  }
  return size_ < size && count < 0 ? errno : 0;
}

} // namespace nasshare
