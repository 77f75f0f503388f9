// What is left of a broken file may be all that is left of its content.
#include "base/keep_aside.h"

#include "base/text.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

constexpr std::string_view numbers[] = {"", "2", "3", "4", "5", "6", "7", "8", "9"};

bool is_same_file(const char *a, const char *b) {
  struct stat first {};
  struct stat second {};
  return stat(a, &first) == 0 && stat(b, &second) == 0 && first.st_ino == second.st_ino &&
         first.st_dev == second.st_dev;
}

} // namespace

bool keep_aside(const char *path) {
  for (const auto number : numbers) {
    const Text<path_width> aside{path, ".bad", number};
    if (!aside.is_whole()) {
      return false;
    }
    if (number == std::end(numbers)[-1]) {
      unlink(aside.c_str());
    }
    if (link(path, aside.c_str()) == 0 || is_same_file(path, aside.c_str())) {
      return true;
    }
    if (errno != EEXIST) {
      return false;
    }
  }
  return false;
}

} // namespace nasshare
