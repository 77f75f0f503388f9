// The UUID of an array, as "mdadm -D" reports it.
#pragma once

#include <string_view>

namespace nasshare {

// The UUID of a line "UUID : ..."; empty for any other line.
std::string_view uuid_of_line(std::string_view line);

} // namespace nasshare
