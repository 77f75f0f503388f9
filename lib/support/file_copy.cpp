#include "nasshare/support.h"
#include "support/owners.h"
#include "support/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace nasshare;

namespace {

constexpr std::size_t copy_path_width = 1024;

int failed(const char *message) {
  std::puts(message);
  return -1;
}

int open_destination(const char *path, int flags, mode_t mode) {
  return open(path, O_WRONLY | O_CREAT | O_CLOEXEC | flags, mode);
}

int copy_and_close(int source, Descriptor &destination) {
  int result = 0;
  if (copyfd_eof(source, destination.get(), 0) == -1) {
    result = failed("CP: file copy error");
  }
  if (destination.close() != 0) {
    result = failed("CP: can't close dest fd");
  }
  return result;
}

bool is_link(const char *path) {
  struct stat status {};
  return lstat(path, &status) == 0 && S_ISLNK(status.st_mode);
}

} // namespace

int cp(const char *source, const char *destination) {
  struct stat status {};
  if (!given(source) || !given(destination) || stat(source, &status) != 0 || S_ISDIR(status.st_mode)) {
    return -1;
  }
  if (std::strlen(source) >= copy_path_width || std::strlen(destination) >= copy_path_width) {
    return -1; // a cut path would name another file
  }
  std::array<char, copy_path_width> target{};
  assign(target, destination);

  const char *source_name = bb_get_last_path_component(source);
  // A destination that ends in the source's own name is used as it stands, even when it is a directory.
  if (std::strcmp(source_name, bb_get_last_path_component(destination)) != 0) {
    if (stat(destination, &status) == 0) {
      if (S_ISDIR(status.st_mode)) {
        if (std::strlen(destination) + 1 + std::strlen(source_name) >= copy_path_width) {
          return -1;
        }
        concat_path_file(destination, source_name, target.data());
      }
    } else if (errno != ENOENT) {
      return -1;
    }
  }
  return copy_file(source, target.data());
}

int copy_file(const char *source, const char *destination) {
  struct stat from {};
  struct stat to {};
  if (!given(source) || stat(source, &from) != 0) {
    return failed("CP: cant' stat source"); // spelt so on purpose: scripts look for it
  }
  if (S_ISDIR(from.st_mode)) {
    return failed("CP: source can't be directory");
  }
  if (is_link(source)) {
    return failed("CP: source can't be a link");
  }
  bool exists = destination != nullptr && stat(destination, &to) == 0;
  if (exists && from.st_dev == to.st_dev && from.st_ino == to.st_ino) {
    return failed("CP: source & dest can't be the same");
  }
  if (!exists && (destination == nullptr || errno != ENOENT)) {
    return failed("CP: can't stat dest");
  }
  if (!S_ISREG(from.st_mode)) {
    return 0;
  }

  Descriptor input(open(source, O_RDONLY | O_CLOEXEC));
  if (!input) {
    return failed("CP: src fd open error");
  }
  Descriptor output(open_destination(destination, exists ? O_TRUNC : O_EXCL, from.st_mode));
  if (output) {
    return copy_and_close(input.get(), output);
  }
  if (unlink(destination) != 0) {
    return failed("CP: dest file exist and can't remove");
  }
  Descriptor fresh(open_destination(destination, O_EXCL, from.st_mode));
  return fresh ? copy_and_close(input.get(), fresh) : failed("CP: dest fd open error");
}

int64_t copyfd_eof(int source, int destination, int64_t limit) {
  if (source < 0) {
    return -1;
  }
  std::array<char, 4096> chunk{};
  int64_t total = 0;
  while (limit <= 0 || total < limit) {
    auto wanted = chunk.size();
    if (limit > 0 && limit - total < std::ssize(chunk)) {
      wanted = static_cast<std::size_t>(limit - total);
    }
    auto count = safe_read(source, chunk.data(), wanted);
    if (count <= 0) {
      return count == 0 ? total : -1;
    }
    if (destination >= 0 && full_write(destination, chunk.data(), static_cast<std::size_t>(count)) != count) {
      return -1;
    }
    total += count;
  }
  return total;
}

ssize_t safe_read(int fd, void *buffer, size_t length) {
  ssize_t count = 0;
  do {
    count = read(fd, buffer, length);
  } while (count < 0 && errno == EINTR);
  return count;
}

ssize_t safe_write(int fd, const void *buffer, size_t length) {
  ssize_t count = 0;
  do {
    count = write(fd, buffer, length);
  } while (count < 0 && errno == EINTR);
  return count;
}

ssize_t full_read(int fd, void *buffer, size_t length) {
  auto *next = static_cast<char *>(buffer);
  ssize_t total = 0;
  while (static_cast<size_t>(total) < length) {
    auto count = safe_read(fd, next + total, length - static_cast<size_t>(total));
    if (count <= 0) {
      return count < 0 && total == 0 ? count : total;
    }
    total += count;
  }
  return total;
}

ssize_t full_write(int fd, const void *buffer, size_t length) {
  const auto *next = static_cast<const char *>(buffer);
  ssize_t total = 0;
  while (static_cast<size_t>(total) < length) {
    auto count = safe_write(fd, next + total, length - static_cast<size_t>(total));
    if (count < 0) {
      return total == 0 ? count : total;
    }
    total += count;
  }
  return total;
}

const char *bb_get_last_path_component(const char *path) {
  if (path == nullptr) {
    return "";
  }
  const char *slash = std::strrchr(path, '/');
  return slash == nullptr || std::strcmp(path, "/") == 0 ? path : slash + 1;
}

const char *last_char_is(const char *text, int character) {
  if (!given(text)) {
    return nullptr;
  }
  const char *last = text + std::strlen(text) - 1;
  return *last == static_cast<char>(character) ? last : nullptr;
}

void concat_path_file(const char *directory, const char *file, char *output) {
  if (output == nullptr) {
    return;
  }
  const char *folder = directory == nullptr ? "" : directory;
  const char *name = file == nullptr ? "" : file;
  while (*name == '/') {
    ++name;
  }
  Text<copy_path_width> joined{folder, last_char_is(folder, '/') == nullptr ? "/" : "", name};
  assign(std::span(output, copy_path_width), joined.view());
}
