// Values in shell commands: a backslash before each of $ ` # % ^ & ( ) + { } ; [ ] ' = and the blank. Double
// quotes, backslashes and ! * ? | < > ~ are left as they are: wanted.
#pragma once

#include "base/text.h"

namespace nasshare {

using EscapedPath = Text<2 * path_width>; // every character of a path may take a backslash

EscapedPath shell_escaped(std::string_view text);

// Whether the text holds a character that takes a backslash.
bool needs_shell_escape(std::string_view text);

} // namespace nasshare
