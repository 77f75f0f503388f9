// What is left of a broken file may be all that is left of its content.
#include "base/keep_aside.h"

#include "base/text.h"

#include <unistd.h>

namespace nasshare {

bool keep_aside(const char *path) {
  const Text<path_width> aside{path, ".bad"};
  if (!aside.is_whole()) {
    return false;
  }
  unlink(aside.c_str());
  return link(path, aside.c_str()) == 0;
}

} // namespace nasshare
