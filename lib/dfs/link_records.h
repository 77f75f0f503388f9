// The trouble that the listed DFS links came with: one may be missing among them, for which memory was short.
#pragma once

#include "base/watch.h"

namespace nasshare {

// Forgotten when the list is emptied.
const Trouble &link_trouble();

} // namespace nasshare
