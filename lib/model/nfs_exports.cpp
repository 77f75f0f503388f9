// What /etc/exports says: which folders NFS clients can reach.
#include "model/nfs_exports.h"

#include "base/debug.h"
#include "base/lines.h"
#include "base/text.h"

namespace nasshare {
namespace {

// The path of a line that begins with a path in double quotes: the text behind the first character, up to the
// last quote that follows the first one. Other lines give a text that is no path.
std::string_view exported_path(std::string_view line) {
  const auto first = line.find('"');
  const auto last = line.rfind('"');
  if (first != std::string_view::npos && last != first) {
    line = line.substr(0, last);
  }
  return line.empty() ? line : line.substr(1);
}

using Path = Text<path_width>;

// Lines without a quote name no path.
bool names_path(std::string_view line) {
  return contains(line, "\"");
}

} // namespace

bool is_exported_or_note(std::string_view path) {
  for (const auto line : FileLines("/etc/exports")) {
    const Path exported{exported_path(line)};
    trace_debug("get_nfs_path---->[%s]\n", exported.c_str());
    trace_debug("compare path---->[%.*s]\n", static_cast<int>(path.size()), path.data());
    if (names_path(line) && exported.view() == path) {
      return true;
    }
  }
  return false;
}

void NfsExports::read_or_note() {
  are_known_ = true;
  for (const auto line : FileLines("/etc/exports")) {
    if (names_path(line)) {
      are_known_ = paths_.insert(Path{exported_path(line)}.view()) && are_known_;
    }
  }
}

// A trace tells of every comparison.
bool NfsExports::contain_or_note(std::string_view path) const {
  return are_known_ && !is_tracing() ? paths_.contains(path) : is_exported_or_note(path);
}

} // namespace nasshare
