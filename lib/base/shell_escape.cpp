// Which characters take a backslash in a shell command.
#include "base/shell_escape.h"

namespace nasshare {
namespace {

constexpr std::string_view special = "$`#%^&()+{};[]'= ";

} // namespace

bool needs_shell_escape(std::string_view text) {
  return text.find_first_of(special) != std::string_view::npos;
}

EscapedPath shell_escaped(std::string_view text) {
  EscapedPath escaped;
  while (!text.empty()) {
    const auto plain = text.substr(0, text.find_first_of(special));
    escaped.append(plain);
    text.remove_prefix(plain.size());
    if (!text.empty()) {
      // A text longer than any path loses its end, but no backslash is parted from its character.
      static_cast<void>(escaped.append_whole({"\\", text.substr(0, 1)}));
      text.remove_prefix(1);
    }
  }
  return escaped;
}

} // namespace nasshare
