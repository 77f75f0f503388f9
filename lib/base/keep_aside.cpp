// What is left of a broken file may be all that is left of its content.
#include "base/keep_aside.h"

#include "base/same_file.h"
#include "base/text.h"

#include <cerrno>
#include <unistd.h>

namespace nasshare {
namespace {

constexpr std::string_view numbers[] = {"", "2", "3", "4", "5", "6", "7", "8", "9"};

// A link that leads to the file is none of its names: it would lead to the successor.
bool is_kept_as(const char *path, const char *aside) {
  struct stat file {};
  struct stat kept {};
  return lstat(path, &file) == 0 && lstat(aside, &kept) == 0 && is_same_file(file, kept);
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
    if (link(path, aside.c_str()) == 0 || is_kept_as(path, aside.c_str())) {
      return true;
    }
    if (errno != EEXIST) {
      return false;
    }
  }
  return false;
}

} // namespace nasshare
