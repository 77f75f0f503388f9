// The link file.
#pragma once

#include "dfs/dfs_xml.h"

namespace nasshare {

// Replaces the file with the link list. False, and the old file untouched, on failure.
bool store_links(Form form);

// Whether the links can be loaded now. The link list is empty afterwards.
bool links_can_be_loaded();

} // namespace nasshare
