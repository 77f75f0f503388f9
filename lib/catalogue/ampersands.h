// The escaping of names, comments and paths in the stores: "&" stands there as "&amp;".
#pragma once

#include <span>

namespace nasshare {

// "&" to "&amp;" in place, cut to the field.
void escape_ampersands(std::span<char> field);

// "&amp;" to "&" in place.
void recover_ampersands(std::span<char> field);

} // namespace nasshare
