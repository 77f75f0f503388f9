// What /proc/mdstat says of an array.
#pragma once

#include "nasshare/catalogue.h"

#include <cstdint>
#include <string_view>

namespace nasshare {

// The kind of array that a line names, or `otherwise`. A stripe over md1 and md2 is a set of striped mirrors.
std::int32_t array_kind(std::string_view line, std::string_view md_name, std::int32_t otherwise);

} // namespace nasshare
