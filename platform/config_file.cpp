#include "config_file.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

int lock_folder(const char *path) {
  mkdir(path, 0755);
  nasshare::Descriptor folder(open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  int result = 0;
  do {
    result = flock(folder.get(), LOCK_EX);
  } while (result != 0 && errno == EINTR);
  return result == 0 ? folder.release() : -1;
}

} // namespace

std::optional<std::string> read_file(const char *path) {
  nasshare::Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
  if (!file) {
    return errno == ENOENT ? std::optional<std::string>(std::string()) : std::nullopt;
  }
  std::string text;
  std::array<char, 16384> block{};
  for (;;) {
    auto count = read(file.get(), block.data(), block.size());
    if (count == 0) {
      return text;
    }
    if (count > 0) {
      text.append(block.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      const int error = errno;
      file.close();
      errno = error;
      return std::nullopt;
    }
  }
}

FolderLock::FolderLock(const char *folder) : folder_(lock_folder(folder)) {}

// A process that was forked meanwhile has the folder open too and must not keep the lock.
FolderLock::~FolderLock() {
  if (folder_) {
    flock(folder_.get(), LOCK_UN);
  }
}

bool keep_aside(const char *path, const char *aside) {
  unlink(aside);
  return link(path, aside) == 0;
}

} // namespace platform
