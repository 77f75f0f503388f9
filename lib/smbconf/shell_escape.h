// Values in shell commands: a backslash before each of $ ` # % ^ & ( ) + { } ; [ ] ' = and the blank. Double
// quotes, backslashes and ! * ? | < > ~ are left as they are, on purpose.
#pragma once

#include "support/text.h"

#include <string_view>

namespace nasshare {

using EscapedPath = Text<2 * path_width>; // every character of a path may take a backslash

EscapedPath shell_escaped(std::string_view text);

} // namespace nasshare
