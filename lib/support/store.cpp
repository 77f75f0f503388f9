#include "support/store.h"

#include "support/owners.h"
#include "support/text.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {

namespace {

bool flush(const char *path, int flags) {
  Descriptor file(open(path, O_RDONLY | O_CLOEXEC | flags));
  return file && fsync(file.get()) == 0 && file.close() == 0;
}

void flush_folder_of(std::string_view path) {
  auto slash = path.find_last_of('/');
  Text<path_width> folder{slash == std::string_view::npos ? "." : path.substr(0, slash + 1)};
  // The new file is in place already; a folder that cannot be flushed only leaves the moment open.
  static_cast<void>(flush(folder.c_str(), O_DIRECTORY));
}

bool write_all(int fd, std::string_view content) {
  while (!content.empty()) {
    auto count = write(fd, content.data(), content.size());
    if (count < 0 && errno != EINTR) {
      return false;
    }
    content.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
  }
  return true;
}

bool take_over_mode(int fd, const char *path) {
  struct stat old {};
  if (stat(path, &old) != 0) {
    return errno == ENOENT; // the new file has been created private
  }
  bool same_owner = old.st_uid == geteuid() && old.st_gid == getegid();
  return (same_owner || fchown(fd, old.st_uid, old.st_gid) == 0) && fchmod(fd, old.st_mode & 07777U) == 0;
}

bool write_fresh(const char *fresh, const char *path, std::string_view content, Mode mode) {
  mode_t created = mode == Mode::as_created ? 0666 : 0600;
  Descriptor file(open(fresh, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, created));
  return file && (mode == Mode::as_created || take_over_mode(file.get(), path)) &&
         write_all(file.get(), content) && file.close() == 0;
}

} // namespace

bool put_in_place(const char *fresh, const char *target) {
  if (!flush(fresh, O_NOFOLLOW) || std::rename(fresh, target) != 0) {
    unlink(fresh);
    return false;
  }
  flush_folder_of(target);
  return true;
}

bool store_file(const char *path, std::string_view content, Mode mode) {
  Text<path_width> fresh{path, fresh_suffix};
  if (!fresh.whole()) {
    return false;
  }
  unlink(fresh.c_str()); // what a power cut may have left
  if (!write_fresh(fresh.c_str(), path, content, mode)) {
    unlink(fresh.c_str());
    return false;
  }
  return put_in_place(fresh.c_str(), path);
}

} // namespace nasshare
