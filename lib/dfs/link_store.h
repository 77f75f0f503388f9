// The link file, /etc/NAS_CFG/smbdfs.xml.
#pragma once

#include "base/watch.h"
#include "dfs/dfs_xml.h"

namespace nasshare {

// Held from the load to the store of a change.
inline constexpr const char *dfs_links_lock = "/run/nasshare-dfs-links.lock";

// Replaces the file with the link list. False, and the old file untouched, on failure, and when the file or
// the list came with trouble, so that links may be missing.
[[nodiscard]] bool store_links(Form form);

// Whether the links can be loaded now. The link list is empty afterwards.
[[nodiscard]] bool can_load_links();

} // namespace nasshare
