// Copying a file. Every failure is a line "CP: ..." on standard output, whatever the debug flag is.
#include "base/descriptors.h"
#include "base/owners.h"
#include "base/same_file.h"
#include "nasshare/support.h"
#include "support/copy_path.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace nasshare {
namespace {

int fail(const char *message) {
  std::puts(message);
  return -1;
}

Descriptor open_destination(const char *path, int flags, mode_t mode) {
  return Descriptor(open(path, O_WRONLY | O_CREAT | O_CLOEXEC | flags, mode));
}

int copy_and_close(int source, Descriptor &destination) {
  int result = 0;
  if (copyfd_eof(source, destination.get(), 0) == -1) {
    result = fail("CP: file copy error");
  }
  if (destination.close() != 0) {
    result = fail("CP: can't close dest fd");
  }
  return result;
}

bool is_link(const char *path) {
  struct stat status {};
  return lstat(path, &status) == 0 && S_ISLNK(status.st_mode);
}

// Where a copy of the source goes: into a destination that is a directory, unless that ends in the source's
// own name; else to the destination. Empty when there is no telling, or no room for the path.
CopyPath target_of(const char *source, const char *destination) {
  const auto *const name = bb_get_last_path_component(source);
  if (std::strcmp(name, bb_get_last_path_component(destination)) == 0) {
    return {destination};
  }
  struct stat status {};
  if (stat(destination, &status) != 0) {
    return {errno == ENOENT ? destination : ""};
  }
  if (!S_ISDIR(status.st_mode)) {
    return {destination};
  }
  const std::size_t slash = last_char_is(destination, '/') == nullptr ? 1 : 0;
  if (std::strlen(destination) + slash + std::strlen(name) >= copy_path_width) {
    return {};
  }
  char path[copy_path_width];
  concat_path_file(destination, name, path);
  return {path};
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int cp(const char *source, const char *destination) {
  struct stat status {};
  if (!is_given(source) || !is_given(destination) || stat(source, &status) != 0 || S_ISDIR(status.st_mode)) {
    return -1;
  }
  if (std::strlen(source) >= copy_path_width || std::strlen(destination) >= copy_path_width) {
    return -1; // a cut path would name another file
  }
  const auto target = target_of(source, destination);
  return target.is_empty() ? -1 : copy_file(source, target.c_str());
}

int copy_file(const char *source, const char *destination) {
  struct stat from {};
  struct stat to {};
  if (!is_given(source) || stat(source, &from) != 0) {
    return fail("CP: cant' stat source"); // spelt so: wanted, scripts look for it
  }
  if (S_ISDIR(from.st_mode)) {
    return fail("CP: source can't be directory");
  }
  if (is_link(source)) {
    return fail("CP: source can't be a link");
  }
  const bool exists = destination != nullptr && stat(destination, &to) == 0;
  if (exists && is_same_file(from, to)) {
    return fail("CP: source & dest can't be the same");
  }
  if (!exists && (destination == nullptr || errno != ENOENT)) {
    return fail("CP: can't stat dest");
  }
  if (!S_ISREG(from.st_mode)) {
    return 0;
  }

  const Descriptor input(open(source, O_RDONLY | O_CLOEXEC));
  if (!input) {
    return fail("CP: src fd open error");
  }
  auto output = open_destination(destination, exists ? O_TRUNC : O_EXCL, from.st_mode);
  if (output) {
    return copy_and_close(input.get(), output);
  }
  if (unlink(destination) != 0) {
    return fail("CP: dest file exist and can't remove");
  }
  auto fresh = open_destination(destination, O_EXCL, from.st_mode);
  return fresh ? copy_and_close(input.get(), fresh) : fail("CP: dest fd open error");
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
    const auto count = read_some(source, chunk.data(), wanted);
    if (count <= 0) {
      return count == 0 ? total : -1;
    }
    if (destination >= 0 && !write_all(destination, {chunk.data(), static_cast<std::size_t>(count)})) {
      return -1;
    }
    total += count;
  }
  return total;
}
