// The link file.
#pragma once

#include "dfs/dfs_xml.h"

namespace nasshare {

// Replaces the file with the link list. False, and the old file untouched, on failure.
bool store_links(Form form);

} // namespace nasshare
