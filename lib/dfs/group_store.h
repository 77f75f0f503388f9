// The group file, /etc/NAS_CFG/smbdfs_group.xml. While they are loaded, the groups are the name records.
#pragma once

#include "dfs/dfs_xml.h"

namespace nasshare {

// Held from the load to the store of a change.
inline constexpr const char *dfs_groups_lock = "/run/nasshare-dfs-groups.lock";

// The trouble that the groups came with when they were last loaded.
const Trouble &group_trouble();

// Replaces the file with the name records. False, and the old file untouched, on failure.
[[nodiscard]] bool store_groups(Form form);

} // namespace nasshare
