// A configuration file written in place: the whole text in one write, into room that was reserved before.
#include "base/in_place.h"

#include "base/descriptors.h"
#include "base/program_lock.h"
#include "base/same_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

// Kernels before 3.17 have no such memory, and a system may forbid it; a file without a name does as well.
Descriptor open_memory() {
  auto memory = beyond_standard(Descriptor(memfd_create("text", MFD_CLOEXEC)));
  if (memory) {
    return memory;
  }
  const File file(std::tmpfile());
  return Descriptor(file ? fcntl(fileno(file.get()), F_DUPFD_CLOEXEC, STDERR_FILENO + 1) : -1);
}

// A stream that tells of every write that failed, for short memory too.
FILE *open_text() {
  auto memory = open_memory();
  auto *const stream = fdopen(memory.get(), "w+e");
  if (stream != nullptr) {
    static_cast<void>(memory.release()); // the stream's now
  }
  return stream;
}

// The file that is there, or a new one.
Descriptor open_or_create(const char *path, bool &is_created) {
  constexpr int flags = O_RDWR | O_CLOEXEC;
  is_created = false;
  Descriptor file(open(path, flags));
  if (file || errno != ENOENT) {
    return file;
  }
  Descriptor fresh(open(path, flags | O_CREAT | O_EXCL, 0664));
  is_created = static_cast<bool>(fresh);
  return fresh || errno != EEXIST ? std::move(fresh) : Descriptor(open(path, flags));
}

std::optional<off_t> size_of(int fd) {
  struct stat status {};
  return fstat(fd, &status) == 0 ? std::optional(status.st_size) : std::nullopt;
}

// The old text is not given up for half a new one. Who reads meanwhile, or after a kill, sees empty lines
// behind the old text, which say nothing in any of these files.
bool reserve(int fd, off_t old_size, off_t size) {
  std::array<char, 4096> lines{};
  lines.fill('\n');
  bool is_reserved = lseek(fd, old_size, SEEK_SET) == old_size;
  for (auto end = old_size; is_reserved && end < size;) {
    const auto length = std::min(lines.size(), static_cast<std::size_t>(size - end));
    is_reserved = write_all(fd, {lines.data(), length});
    end += static_cast<off_t>(length);
  }
  if (!is_reserved) {
    static_cast<void>(ftruncate(fd, old_size)); // shrinking a file needs no room
  }
  return is_reserved && lseek(fd, 0, SEEK_SET) == 0;
}

// A file's content in memory.
class Mapped {
public:
  Mapped(int fd, off_t size)
      : length_(static_cast<std::size_t>(size)),
        bytes_(length_ == 0 ? nullptr : mmap(nullptr, length_, PROT_READ, MAP_PRIVATE, fd, 0)) {}
  Mapped(const Mapped &) = delete;
  Mapped &operator=(const Mapped &) = delete;
  ~Mapped() {
    if (is_there() && length_ > 0) {
      munmap(bytes_, length_);
    }
  }

  [[nodiscard]] bool is_there() const { return bytes_ != MAP_FAILED; }
  [[nodiscard]] std::string_view text() const { return {static_cast<const char *>(bytes_), length_}; }

private:
  std::size_t length_;
  void *bytes_;
};

} // namespace

InPlaceFile::InPlaceFile(const char *path)
    : path_(path), file_(beyond_standard(open_or_create(path, is_created_))), text_(open_text()) {}

// Another program may have filled it meanwhile, or put a file of its own there.
InPlaceFile::~InPlaceFile() {
  if (is_created_) {
    const ProgramLock lock(in_place_lock);
    if (stands() && size_of(file_.get()) == 0) {
      unlink(path_);
    }
  }
}

bool InPlaceFile::stands() const {
  struct stat own {};
  struct stat there {};
  return fstat(file_.get(), &own) == 0 && stat(path_, &there) == 0 && is_same_file(own, there);
}

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
  const Mapped whole(fileno(text_.get()), std::max(size, *old_size));
  const bool is_written = whole.is_there() && reserve(file_.get(), *old_size, size) &&
                          write_all(file_.get(), whole.text()) && ftruncate(file_.get(), size) == 0;
  if (!is_written && *old_size == 0) {
    static_cast<void>(ftruncate(file_.get(), 0)); // what was empty is not left with half a text
  }
  return is_written;
}

int InPlaceFile::commit() {
  const ProgramLock lock(in_place_lock);
  if (!stands()) { // another program has taken the empty file away, or replaced it
    file_ = beyond_standard(open_or_create(path_, is_created_));
  }
  if (!write_over() || file_.close() != 0) {
    return -1;
  }
  is_created_ = false; // and stays
  return 0;
}

} // namespace nasshare
