#include "support/store.h"

#include "support/owners.h"
#include "support/shared_folder.h"
#include "support/text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
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

mode_t mode_of_new_files() {
  mode_t mask = umask(0);
  umask(mask);
  return 0664U & ~mask; // under a mask of zero too, nobody else is to write who may read what
}

// Creates the successor and gives it its name. In a shared folder nobody can know that name beforehand.
Descriptor create_fresh(const char *path, Text<path_width> &fresh) {
  if (is_in_shared_folder(path)) {
    fresh.append(".XXXXXX");
    return Descriptor(fresh.whole() ? mkostemp(fresh.field().data(), O_CLOEXEC) : -1);
  }
  unlink(fresh.c_str()); // what a power cut may have left
  return Descriptor(fresh.whole() ? open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600) : -1);
}

bool fill_fresh(Descriptor &file, const char *path, std::string_view content, Mode mode) {
  bool has_mode = mode == Mode::as_created ? fchmod(file.get(), mode_of_new_files()) == 0
                                           : take_over_mode(file.get(), path);
  return has_mode && write_all(file.get(), content) && fsync(file.get()) == 0 && file.close() == 0;
}

// Over whatever stands there: a folder, which somebody may plant where everybody can write, changes places
// with the file, so that there is never room for the next one. It may come and go meanwhile.
bool rename_over(const char *fresh, const char *target) {
  constexpr int attempts = 1000;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (std::rename(fresh, target) == 0) {
      return true;
    }
    if (errno != EISDIR || !is_in_shared_folder(target)) {
      return false;
    }
    if (renameat2(AT_FDCWD, fresh, AT_FDCWD, target, RENAME_EXCHANGE) == 0) {
      rmdir(fresh); // or it stays there, with what is in it
      return true;
    }
  }
  return false;
}

} // namespace

bool put_in_place(const char *fresh, const char *target) {
  if (!flush(fresh, O_NOFOLLOW) || !rename_over(fresh, target)) {
    unlink(fresh);
    return false;
  }
  flush_folder_of(target);
  return true;
}

bool store_file(const char *path, std::string_view content, Mode mode) {
  Text<path_width> name{path, fresh_suffix};
  auto file = create_fresh(path, name);
  if (!file) {
    return false;
  }
  const char *fresh = name.field().data();
  if (!fill_fresh(file, path, content, mode) || !rename_over(fresh, path)) {
    unlink(fresh);
    return false;
  }
  flush_folder_of(path);
  return true;
}

} // namespace nasshare
