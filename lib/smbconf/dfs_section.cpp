// The section "DFS" of smb.conf, which serves the tree of DFS links.
#include "dfs/dfs_root.h"
#include "smbconf/option_lines.h"
#include "smbconf/sections.h"

namespace nasshare {

void write_dfs_section(FILE *file) {
  std::fprintf(file, "\n");
  write_section(file, "DFS");
  std::fprintf(file, "comment = Samba MSDFS Server\n");
  std::fprintf(file, "path = %s\n", dfs_root);
  std::fprintf(file, "browseable = yes\n");
  std::fprintf(file, "public = yes\n");
  std::fprintf(file, "read list =\n");
  write_everyone(file, "write list");
  std::fprintf(file, "invalid users =\n");
  write_everyone(file, "valid users");
  std::fprintf(file, "msdfs root = yes\n");
}

} // namespace nasshare
