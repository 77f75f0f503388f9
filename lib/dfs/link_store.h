// The link file, /etc/NAS_CFG/smbdfs.xml.
#pragma once

#include "base/watch.h"
#include "dfs/dfs_xml.h"

namespace nasshare {

// Held from the load to the store of a change.
inline constexpr const char *dfs_links_lock = "/run/nasshare-dfs-links.lock";

// The trouble that the links in the list came with: then some may be missing, and the list is not stored.
Trouble &link_trouble();

// Replaces the file with the link list. False, and the old file untouched, on failure.
[[nodiscard]] bool store_links(Form form);

// Whether the links can be loaded now. The link list is empty afterwards.
[[nodiscard]] bool can_load_links();

} // namespace nasshare
