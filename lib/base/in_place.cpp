// A configuration file written in place: the whole text in one write, into room that was reserved before.
#include "base/in_place.h"

#include "base/descriptors.h"
#include "base/program_lock.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

// A stream that tells of every write that failed, for short memory too.
FILE *open_memory() {
  Descriptor memory(memfd_create("text", MFD_CLOEXEC));
  auto *const stream = memory ? fdopen(memory.get(), "w+e") : nullptr;
  if (stream != nullptr) {
    static_cast<void>(memory.release()); // the stream's now
  }
  return stream;
}

std::optional<off_t> size_of(int fd) {
  struct stat status {};
  return fstat(fd, &status) == 0 ? std::optional(status.st_size) : std::nullopt;
}

// The old text is not given up for half a new one.
bool reserve(int fd, off_t old_size, off_t size) {
  if (size <= old_size || posix_fallocate(fd, 0, size) == 0) {
    return true;
  }
  static_cast<void>(ftruncate(fd, old_size)); // shrinking a file needs no room
  return false;
}

// Everything that is in memory, in one call.
bool write_from(int memory, off_t size, int fd) {
  const auto length = static_cast<std::size_t>(size);
  void *const bytes = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, memory, 0);
  if (bytes == MAP_FAILED) {
    return false;
  }
  const bool is_written = write_all(fd, {static_cast<const char *>(bytes), length});
  munmap(bytes, length);
  return is_written;
}

} // namespace

InPlaceFile::InPlaceFile(const char *path)
    : file_(open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0664)), text_(open_memory()) {}

bool InPlaceFile::write_over() {
  const auto old_size = size_of(file_.get());
  const auto size = text_ ? ftello(text_.get()) : -1;
  if (!old_size || size < 0) {
    return false;
  }
  // The rest of a longer old text is covered by the same write: nobody ever reads it behind the new one.
  for (auto covered = size; covered < *old_size; ++covered) {
    std::putc('\n', text_.get());
  }
  if (std::fflush(text_.get()) != 0 || std::ferror(text_.get()) != 0) {
    return false;
  }
  return reserve(file_.get(), *old_size, size) &&
         write_from(fileno(text_.get()), std::max(size, *old_size), file_.get()) &&
         ftruncate(file_.get(), size) == 0;
}

int InPlaceFile::commit() {
  const ProgramLock lock(in_place_lock);
  const bool is_written = write_over();
  return file_.close() == 0 && is_written ? 0 : -1;
}

} // namespace nasshare
