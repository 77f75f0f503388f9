// How a stored file is replaced: the successor is written beside it, flushed and renamed over it, and the
// folder flushed.
#include "base/file_replacement.h"

#include "base/descriptors.h"
#include "base/folder_of.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

constexpr std::string_view successor_suffix = ".new";

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

// Letters and digits that nobody can know beforehand.
Text<8> secret_word() {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz012345";
  std::array<unsigned char, 6> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != std::ssize(bytes)) {
    return {};
  }
  Text<8> word;
  for (const auto byte : bytes) {
    word.append(letters.substr(byte % letters.size(), 1));
  }
  return word;
}

} // namespace

Successor::Successor(std::string_view path, Naming naming) : path_{path}, naming_(naming) {}

Descriptor Successor::create_with_secret_name(mode_t permissions) {
  constexpr int most_attempts = 100;
  for (int attempt = 0; attempt < most_attempts; ++attempt) {
    const auto word = secret_word();
    name_ = {path_.view(), successor_suffix, ".", word.view()};
    if (word.is_empty() || !name_.is_whole()) {
      break;
    }
    Descriptor file(open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
    stands_ = static_cast<bool>(file);
    if (stands_ || errno != EEXIST) {
      return file;
    }
  }
  return Descriptor(-1);
}

Descriptor Successor::create(mode_t permissions) {
  name_ = {path_.view(), successor_suffix};
  if (!path_.is_whole() || !name_.is_whole()) {
    return Descriptor(-1); // a cut name is another file's
  }
  if (naming_ == Naming::plain) {
    unlink(name_.c_str()); // what a power cut may have left
    Descriptor file(open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
    stands_ = static_cast<bool>(file);
    if (stands_ || errno != EEXIST) {
      return file;
    }
  }
  return create_with_secret_name(permissions);
}

bool Successor::fill(Descriptor &file, std::string_view content) {
  const bool is_whole = write_all(file.get(), content) && fsync(file.get()) == 0 && file.close() == 0;
  if (!is_whole) {
    remove();
  }
  return is_whole;
}

bool Successor::write(std::string_view content, mode_t permissions) {
  auto file = create(permissions);
  return file && fill(file, content);
}

bool Successor::write_with_kept_mode(std::string_view content) {
  auto file = create(0600);
  if (file && !take_over_mode(file.get(), path_.c_str())) {
    remove();
    return false;
  }
  return file && fill(file, content);
}

bool Successor::take_place() {
  if (!stands_ || std::rename(name_.c_str(), path_.c_str()) != 0) {
    return false;
  }
  has_taken_place();
  return true;
}

void Successor::has_taken_place() {
  stands_ = false;
  // The new file is there already: a folder that cannot be flushed only leaves open when it reaches the disk.
  static_cast<void>(flush(folder_of(path_.view()).c_str(), O_DIRECTORY));
}

void Successor::remove() {
  if (stands_) {
    unlink(name_.c_str());
    stands_ = false;
  }
}

bool store_file(const char *path, std::string_view content, Mode mode) {
  Successor successor(path);
  const bool is_written =
      mode == Mode::as_created ? successor.write(content) : successor.write_with_kept_mode(content);
  return is_written && successor.take_place();
}

bool flush_file(const char *path) {
  return flush(path, O_NOFOLLOW);
}

} // namespace nasshare
