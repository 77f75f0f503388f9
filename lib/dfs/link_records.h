// The listed DFS links: what identifies one, and the trouble that they came with, since one may be missing
// for which memory was short.
#pragma once

#include "base/text.h"
#include "base/watch.h"
#include "nasshare/dfs.h"

namespace nasshare {

// A link is known by its local name within its group.
inline bool is_link(const smb_dfs_node &link, std::string_view group, std::string_view local) {
  return view(link.group) == group && view(link.local) == local;
}

// Forgotten when the list is emptied.
const Trouble &link_trouble();

} // namespace nasshare
