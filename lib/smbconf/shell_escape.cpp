#include "smbconf/shell_escape.h"

#include "nasshare/smbconf.h"

using namespace nasshare;

namespace {

constexpr std::string_view special = "$`#%^&()+{};[]'= ";

} // namespace

EscapedPath nasshare::shell_escaped(std::string_view text) {
  EscapedPath escaped;
  while (!text.empty()) {
    auto plain = text.substr(0, text.find_first_of(special));
    escaped.append(plain);
    text.remove_prefix(plain.size());
    if (!text.empty()) {
      escaped.append_whole({"\\", text.substr(0, 1)});
      text.remove_prefix(1);
    }
  }
  return escaped;
}

char *fix_path_special_char(char *path) {
  if (path == nullptr || std::string_view(path).find_first_of(special) == std::string_view::npos) {
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
