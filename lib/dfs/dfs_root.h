// Where the tree of DFS links is.
#pragma once

namespace nasshare {

inline constexpr const char *dfs_root = "/etc/dfsroot";

} // namespace nasshare
