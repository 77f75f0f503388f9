#include "nasshare/support.h"
#include "support/debug.h"
#include "support/lines.h"
#include "support/owners.h"
#include "support/text.h"

using namespace nasshare;

namespace {

// The path of a line that begins with a path in double quotes: the text behind the first character, up to
// the last quote that follows the first one. Other lines give a text that is no path.
std::string_view exported_path(std::string_view line) {
  auto first = line.find('"');
  auto last = line.rfind('"');
  if (first != std::string_view::npos && last != first) {
    line = line.substr(0, last);
  }
  return line.empty() ? line : line.substr(1);
}

} // namespace

int check_nfs_share(const char *path) {
  File exports(open_lines("/etc/exports"));
  if (!exports || path == nullptr) {
    return 0;
  }
  for (FileLines lines(exports.get()); lines.next();) {
    Text<path_width> exported{exported_path(lines.line())};
    trace_debug("get_nfs_path---->[%s]\n", exported.c_str());
    trace_debug("compare path---->[%s]\n", path);
    if (contains(lines.line(), "\"") && exported.view() == path) {
      return 1;
    }
  }
  return 0;
}
