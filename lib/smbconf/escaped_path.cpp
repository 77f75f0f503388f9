// A path for a shell command, escaped in place in its field.
#include "base/shell_escape.h"
#include "nasshare/smbconf.h"

using namespace nasshare;

char *fix_path_special_char(char *path) {
  if (path == nullptr || !needs_shell_escape(path)) {
    return nullptr;
  }
  const auto escaped = shell_escaped(path);
  auto kept = cut_text(escaped.view(), path_width - 1);
  // A backslash is not parted from its character.
  if (kept.size() < escaped.view().size() && kept.ends_with('\\')) {
    kept.remove_suffix(1);
  }
  assign({path, path_width}, kept);
  return path;
}
