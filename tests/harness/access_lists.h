// Access lists as text.
#pragma once

#include <string>

namespace nasshare::tests {

inline constexpr const char *everyone = "#nobody#,#@allaccount#";
inline constexpr const char *everyone_in_a_domain = "#nobody#,#@Domain Users#";

// An entry of that many bytes.
std::string long_entry(std::size_t size);
// The names u0000, u0001, ... as entries.
std::string numbered_entries(int count);
// As many of them as fill the 12288 bytes of a list, its terminator included.
inline constexpr int entries_of_a_full_list = 1536;
std::string full_list();

} // namespace nasshare::tests
