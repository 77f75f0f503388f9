// Files and their properties.
#include "files.h"

#include "appliance.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace nasshare::tests {

namespace {

struct stat status_of(const std::string &path) {
  struct stat status = {};
  files::require(::lstat(path.c_str(), &status) == 0, path);
  return status;
}

void write_all(int descriptor, std::string_view text, const std::string &path) {
  files::require(descriptor >= 0, path);
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    files::require(written > 0, path);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  files::require(::close(descriptor) == 0, path);
}

} // namespace

namespace files {

void require(bool condition, const std::string &what) {
  if (!condition) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

void write(const std::string &path, std::string_view text, mode_t mode) {
  write_all(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode), text, path);
  require(::chmod(path.c_str(), mode) == 0, path);
}

void append(const std::string &path, std::string_view text) {
  write_all(::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644), text, path);
}

void remove(const std::string &path) {
  std::filesystem::remove_all(path);
}

void make_folder(const std::string &path, mode_t mode) {
  std::filesystem::create_directories(path);
  require(::chmod(path.c_str(), mode) == 0, path);
}

void make_folder_above(const std::string &path) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
}

std::vector<char *> arguments_of(const std::vector<std::string> &words) {
  std::vector<char *> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string &word : words) {
    arguments.push_back(const_cast<char *>(word.c_str()));
  }
  arguments.push_back(nullptr);
  return arguments;
}

void run(const std::vector<std::string> &words) {
  const std::vector<char *> arguments = arguments_of(words);
  pid_t child = 0;
  errno = ::posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ);
  require(errno == 0, words[0]);
  int status = 0;
  require(::waitpid(child, &status, 0) == child, words[0]);
  if (status != 0) {
    throw std::runtime_error(words[0] + " failed");
  }
}

} // namespace files

std::string read_file(const std::string &path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  files::require(descriptor >= 0, path);
  std::string text;
  std::string part(std::size_t{1} << 16, '\0');
  ssize_t length = 0;
  while ((length = ::read(descriptor, part.data(), part.size())) > 0) {
    text.append(part, 0, static_cast<std::size_t>(length));
  }
  ::close(descriptor);
  files::require(length == 0, path);
  return text;
}

bool exists(const std::string &path) {
  struct stat status = {};
  return ::lstat(path.c_str(), &status) == 0;
}

mode_t mode(const std::string &path) {
  return status_of(path).st_mode & 07777U;
}

uid_t owner(const std::string &path) {
  return status_of(path).st_uid;
}

ino_t inode(const std::string &path) {
  return status_of(path).st_ino;
}

Names names_in(const std::string &folder) {
  Names names;
  for (const auto &entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::ranges::sort(names);
  return names;
}

std::string recording(const std::string &name) {
  return read_file(RECORDINGS "/" + name);
}

} // namespace nasshare::tests
