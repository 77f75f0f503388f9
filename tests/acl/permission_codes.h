// The codes of the account list; any other takes the account out of every list.
#pragma once

#include <cstdint>

namespace nasshare::tests {

inline constexpr std::uint32_t no_list = 0;
inline constexpr std::uint32_t to_read = 1;
inline constexpr std::uint32_t to_write = 2;
inline constexpr std::uint32_t to_deny = 3;

} // namespace nasshare::tests
