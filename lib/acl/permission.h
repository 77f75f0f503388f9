// The codes of an account's permission on a share.
#pragma once

#include <cstdint>

namespace nasshare {

enum Permission : std::uint32_t { no_permission = 0, may_read = 1, may_write = 2, is_denied = 3 };

} // namespace nasshare
