// The trouble that the name records came with: a name may be missing among them, and what is made of them is
// then wrong.
#pragma once

#include "base/watch.h"

namespace nasshare {

// Forgotten when the records are emptied.
Trouble &name_trouble();

} // namespace nasshare
