// The width of the paths that files are copied between.
#pragma once

#include "base/text.h"

namespace nasshare {

inline constexpr std::size_t copy_path_width = 1024;

using CopyPath = Text<copy_path_width>;

} // namespace nasshare
