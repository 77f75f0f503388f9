// The two files of the DFS namespace as text, and the link list in short.
#pragma once

#include "nasshare/dfs.h"

#include <ostream>
#include <string>
#include <vector>

namespace nasshare::tests {

inline constexpr const char *link_path = "/etc/NAS_CFG/smbdfs.xml";
inline constexpr const char *group_path = "/etc/NAS_CFG/smbdfs_group.xml";

struct Link {
  std::string host;
  std::string share;
  std::string local;
  std::string group;

  bool operator==(const Link &) const = default;
};

using Links = std::vector<Link>;

std::ostream &operator<<(std::ostream &out, const Link &link);

smb_dfs_node record_of(const Link &link);
void list_link(const Link &link);
Links listed_links();
// What the link file holds, as its reader gives it.
Links stored_links();

// One item of the link file, and one of the group file. Values are written as they stand, so escaped ones
// have to be.
std::string link_item(const Link &link);
std::string group_item(const std::string &group);
// The whole files.
std::string link_file(const Links &links);
std::string group_file(const std::vector<std::string> &groups);

} // namespace nasshare::tests
