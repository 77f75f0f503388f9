#include "machine.h"

#include "fuzz.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <grp.h>
#include <linux/sockios.h>
#include <map>
#include <net/if.h>
#include <pwd.h>
#include <scsi/sg.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare::machine {
using fuzzing::require;
} // namespace nasshare::machine

extern "C" {
int __real_open(const char *path, int flags, ...);
FILE *__real_fopen(const char *path, const char *mode);
FILE *__real_popen(const char *command, const char *mode);
int __real_pclose(FILE *stream);
int __real_system(const char *command);
int __real_access(const char *path, int mode);
int __real_stat(const char *path, struct stat *status);
int __real_lstat(const char *path, struct stat *status);
int __real_rename(const char *from, const char *to);
int __real_unlink(const char *path);
int __real_rmdir(const char *path);
int __real_mkdir(const char *path, mode_t mode);
int __real_link(const char *from, const char *to);
}

namespace nasshare::machine {
namespace {

// A file is a descriptor of memory; so is what a command prints.
using Files = std::map<std::string, int, std::less<>>;

bool running = false;
bool folders_exist = false;
Files files;
Files outputs;
std::string device_answer;
std::size_t next_account = 0;
std::size_t next_group = 0;

int memory() {
  int fd = memfd_create("file", MFD_CLOEXEC);
  require(fd >= 0, "memory for a file");
  return fd;
}

int memory_with(std::string_view text) {
  int fd = memory();
  require(write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size()), "memory for a text");
  return fd;
}

void put(Files &where, const std::string &name, int fd) {
  auto [place, fresh] = where.try_emplace(name, fd);
  if (!fresh) {
    close(place->second);
    place->second = fd;
  }
}

void close_all(Files &where) {
  for (const auto &[name, fd] : where) {
    close(fd);
  }
  where.clear();
}

int none() {
  errno = ENOENT;
  return -1;
}

// A descriptor of its own, at the file's beginning.
int reopen(int fd, int flags) {
  std::array<char, 32> path{};
  std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", fd);
  return __real_open(path.data(), flags & (O_ACCMODE | O_CLOEXEC | O_TRUNC));
}

int open_file(const char *path, int flags) {
  if ((flags & O_DIRECTORY) != 0) {
    return memory(); // may be flushed and locked
  }
  auto place = files.find(path);
  if (place == files.end()) {
    if ((flags & O_CREAT) == 0) {
      return none();
    }
    place = files.emplace(path, memory()).first;
  } else if ((flags & O_EXCL) != 0) {
    errno = EEXIST;
    return -1;
  }
  return reopen(place->second, flags);
}

FILE *stream_of(const Files &where, std::string_view name) {
  auto place = where.find(name);
  if (place == where.end()) {
    none();
    return nullptr;
  }
  return fdopen(reopen(place->second, O_RDONLY | O_CLOEXEC), "r");
}

int forget(const char *path) {
  auto place = files.find(path);
  if (place == files.end()) {
    return none();
  }
  close(place->second);
  files.erase(place);
  return 0;
}

int copy_name(const char *from, const char *to) {
  auto place = files.find(from);
  if (place == files.end()) {
    return none();
  }
  put(files, to, fcntl(place->second, F_DUPFD_CLOEXEC, 0));
  return 0;
}

int status_of(const char *path, struct stat *status) {
  auto place = files.find(path);
  if (place != files.end()) {
    return fstat(place->second, status);
  }
  *status = {};
  status->st_mode = S_IFDIR | 0755;
  bool is_folder = std::string_view(path).ends_with('/');
  return is_folder ? 0 : none();
}

template <std::size_t Size> char *text_in(std::array<char, Size> &place, const char *text) {
  return std::strncpy(place.data(), text, Size - 1);
}

constexpr std::array<const char *, 5> accounts{"root", "nobody", "alice", "bob", "d e"};

passwd *account(std::size_t number) {
  static std::array<char, 32> name{};
  static std::array<char, 2> empty{};
  static passwd entry{};
  entry = {text_in(name, accounts[number]),
           empty.data(),
           static_cast<uid_t>(number),
           0,
           empty.data(),
           empty.data(),
           empty.data()};
  return &entry;
}

struct Group {
  const char *name;
  std::array<const char *, 2> members;
};

constexpr std::array<Group, 3> groups{
    {{"allaccount", {"alice", "bob"}}, {"staff", {"alice", nullptr}}, {"Domain Users", {nullptr, nullptr}}}};

group *group_entry(std::size_t number) {
  static std::array<char, 32> name{};
  static std::array<std::array<char, 32>, 2> names{};
  static std::array<char *, 3> members{};
  static group entry{};
  members = {};
  for (std::size_t i = 0; i < 2 && groups[number].members[i] != nullptr; ++i) {
    members[i] = text_in(names[i], groups[number].members[i]);
  }
  entry = {text_in(name, groups[number].name), name.data() + name.size() - 1, 0, members.data()};
  return &entry;
}

} // namespace

void start() {
  running = true;
  folders_exist = false;
  device_answer.clear();
}

void stop() {
  running = false;
  close_all(files);
  close_all(outputs);
}

void file(const std::string &path, std::string_view text) {
  put(files, path, memory_with(text));
}

std::optional<std::string> content(const std::string &path) {
  auto place = files.find(path);
  struct stat status {};
  if (place == files.end() || fstat(place->second, &status) != 0) {
    return std::nullopt;
  }
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  require(pread(place->second, text.data(), text.size(), 0) == status.st_size, "a whole file");
  return text;
}

void folders(bool exist) {
  folders_exist = exist;
}

void command(const std::string &name, std::string_view output) {
  put(outputs, name, memory_with(output));
}

void device(std::string_view answer) {
  device_answer = answer;
}

} // namespace nasshare::machine

using namespace nasshare;
using namespace nasshare::machine;

extern "C" {

int __wrap_open(const char *path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  auto mode = (flags & O_CREAT) == 0 ? 0U : va_arg(rest, unsigned);
  va_end(rest);
  return running ? open_file(path, flags) : __real_open(path, flags, mode);
}

// The fuzzer stores what it finds while the input still runs.
FILE *__wrap_fopen(const char *path, const char *mode) {
  return running && mode[0] == 'r' ? stream_of(files, path) : __real_fopen(path, mode);
}

FILE *__wrap_popen(const char *command, const char *mode) {
  if (!running) {
    return __real_popen(command, mode);
  }
  std::string_view words = command;
  if (words.starts_with("echo ")) { // the password, handed to the command behind the pipe
    words.remove_prefix(words.rfind("| ") + 2);
  }
  return stream_of(outputs, take_word(words));
}

int __wrap_pclose(FILE *stream) {
  return running ? std::fclose(stream) : __real_pclose(stream);
}

int __wrap_system(const char *command) {
  require(!running, "no command is run");
  return __real_system(command);
}

int __wrap_access(const char *path, int mode) {
  if (!running) {
    return __real_access(path, mode);
  }
  return files.contains(path) || folders_exist ? 0 : none();
}

int __wrap_stat(const char *path, struct stat *status) {
  return running ? status_of(path, status) : __real_stat(path, status);
}

int __wrap_lstat(const char *path, struct stat *status) {
  return running ? status_of(path, status) : __real_lstat(path, status);
}

int __wrap_rename(const char *from, const char *to) {
  if (!running) {
    return __real_rename(from, to);
  }
  int result = copy_name(from, to);
  return result == 0 ? forget(from) : result;
}

int __wrap_link(const char *from, const char *to) {
  return running ? copy_name(from, to) : __real_link(from, to);
}

int __wrap_unlink(const char *path) {
  return running ? forget(path) : __real_unlink(path);
}

int __wrap_rmdir(const char *path) {
  return running ? none() : __real_rmdir(path);
}

int __wrap_mkdir(const char *path, mode_t mode) {
  return running ? 0 : __real_mkdir(path, mode);
}

// SG_IO of a disk, and the private request of the network interface's driver.
int __wrap_ioctl(int /*fd*/, unsigned long request, void *argument) {
  if (request == SG_IO) {
    auto *block = static_cast<sg_io_hdr_t *>(argument);
    std::memcpy(block->dxferp, device_answer.data(),
                std::min<std::size_t>(block->dxfer_len, device_answer.size()));
  } else if (request == SIOCDEVPRIVATE) {
    auto *driver = static_cast<ifreq *>(argument);
    std::memcpy(driver->ifr_data, device_answer.data(), std::min<std::size_t>(32, device_answer.size()));
  }
  return 0;
}

passwd *__wrap_getpwnam(const char *name) {
  auto place = std::ranges::find(accounts, std::string_view(name));
  return place == accounts.end() ? nullptr : account(static_cast<std::size_t>(place - accounts.begin()));
}

group *__wrap_getgrnam(const char *name) {
  auto place = std::ranges::find_if(
      groups, [name](const Group &group) { return group.name == std::string_view(name); });
  return place == groups.end() ? nullptr : group_entry(static_cast<std::size_t>(place - groups.begin()));
}

void __wrap_setpwent() {
  next_account = 0;
}

passwd *__wrap_getpwent() {
  return next_account < accounts.size() ? account(next_account++) : nullptr;
}

void __wrap_endpwent() {}

void __wrap_setgrent() {
  next_group = 0;
}

group *__wrap_getgrent() {
  return next_group < groups.size() ? group_entry(next_group++) : nullptr;
}

void __wrap_endgrent() {}
}
