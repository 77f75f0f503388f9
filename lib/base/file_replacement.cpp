// How a stored file is replaced: the successor is written beside it, flushed and renamed over it, and the
// folder flushed.
#include "base/file_replacement.h"

#include "base/descriptors.h"
#include "base/folder_of.h"
#include "base/text.h"

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

bool take_over_mode(int fd, const char *path) {
  struct stat old {};
  if (stat(path, &old) != 0) {
    return errno == ENOENT; // the new file has been created private
  }
  const bool is_same_owner = old.st_uid == geteuid() && old.st_gid == getegid();
  return (is_same_owner || fchown(fd, old.st_uid, old.st_gid) == 0) && fchmod(fd, old.st_mode & 07777U) == 0;
}

mode_t mode_of_new_files() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0664U & ~mask; // under a mask of zero too, nobody else is to write who may read what
}

bool rename_over(const char *successor, const char *target) {
  if (std::rename(successor, target) == 0) {
    flush_folder_of(target);
    return true;
  }
  unlink(successor);
  return false;
}

} // namespace

bool fill_successor(Descriptor &successor, const char *path, std::string_view content, Mode mode) {
  const bool has_mode = mode == Mode::as_created ? fchmod(successor.get(), mode_of_new_files()) == 0
                                                 : take_over_mode(successor.get(), path);
  return has_mode && write_all(successor.get(), content) && fsync(successor.get()) == 0 &&
         successor.close() == 0;
}

void flush_folder_of(std::string_view path) {
  static_cast<void>(flush(folder_of(path).c_str(), O_DIRECTORY));
}

bool store_file(const char *path, std::string_view content, Mode mode) {
  const Text<path_width> name{path, successor_suffix};
  if (!name.is_whole()) {
    return false; // a cut name is another file's
  }
  unlink(name.c_str()); // what a power cut may have left
  Descriptor successor(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!successor) {
    return false;
  }
  if (!fill_successor(successor, path, content, mode)) {
    unlink(name.c_str());
    return false;
  }
  return rename_over(name.c_str(), path);
}

bool put_in_place(const char *successor, const char *target) {
  if (!flush(successor, O_NOFOLLOW)) {
    unlink(successor);
    return false;
  }
  return rename_over(successor, target);
}

} // namespace nasshare
