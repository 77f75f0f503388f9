// The trouble that the permission records came with: a share may be missing among them, on which the account
// keeps what it has.
#pragma once

#include "base/watch.h"

namespace nasshare {

// Forgotten when the records are emptied.
Trouble &permission_trouble();

} // namespace nasshare
