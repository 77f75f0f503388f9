// The folder that holds a file, by the file's path.
#pragma once

#include "base/text.h"

namespace nasshare {

// With its "/" at the end; "." for a name without a folder.
inline Text<path_width> folder_of(std::string_view path) {
  const auto slash = path.find_last_of('/');
  return {slash == std::string_view::npos ? "." : path.substr(0, slash + 1)};
}

} // namespace nasshare
