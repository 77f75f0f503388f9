// The two files of the DFS namespace as text, and the link list in short.
#pragma once

#include "nasshare/dfs.h"

#include <cstddef>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

namespace nasshare::tests {

constexpr const char *link_path = "/etc/NAS_CFG/smbdfs.xml";
constexpr const char *group_path = "/etc/NAS_CFG/smbdfs_group.xml";

struct Link {
  std::string host;
  std::string share;
  std::string local;
  std::string group;

  bool operator==(const Link &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Link &link) {
  return out << link.host << "|" << link.share << "|" << link.local << "|" << link.group;
}

inline smb_dfs_node record_of(const Link &link) {
  smb_dfs_node record{};
  std::strncpy(record.host, link.host.c_str(), sizeof record.host - 1);
  std::strncpy(record.share, link.share.c_str(), sizeof record.share - 1);
  std::strncpy(record.local, link.local.c_str(), sizeof record.local - 1);
  std::strncpy(record.group, link.group.c_str(), sizeof record.group - 1);
  return record;
}

inline void list_link(const Link &link) {
  const smb_dfs_node record = record_of(link);
  dfs_add_node(&record);
}

inline std::vector<Link> listed_links() {
  std::vector<Link> links;
  const smb_dfs_node *node = pdfs->count == 0 ? nullptr : pdfs->head;
  for (; node != nullptr; node = node->next) {
    links.push_back({node->host, node->share, node->local, node->group});
  }
  return links;
}

// What the link file holds, as its reader gives it.
inline std::vector<Link> stored_links() {
  get_dfs_info();
  std::vector<Link> links = listed_links();
  dfs_remove_all();
  return links;
}

inline std::string dfs_file(const std::string &items) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n";
  return head + (items.empty() ? "  <dfs/>\n" : "  <dfs>\n" + items + "  </dfs>\n") + "</config>\n";
}

inline std::string dfs_element(const std::string &name, const std::string &value) {
  return "      <" + name + (value.empty() ? "/>\n" : ">" + value + "</" + name + ">\n");
}

// The link file with these links; their values are written as they stand, so escaped ones have to be.
inline std::string link_file(const std::vector<Link> &links) {
  std::string items;
  for (const auto &[host, share, local, group] : links) {
    items += "    <item>\n" + dfs_element("host", host) + dfs_element("share", share) +
             dfs_element("local", local) + dfs_element("group", group) + "    </item>\n";
  }
  return dfs_file(items);
}

// The group file with these groups, likewise.
inline std::string group_file(const std::vector<std::string> &groups) {
  std::string items;
  for (const std::string &group : groups) {
    items += "    <item>\n" + dfs_element("group", group) + "    </item>\n";
  }
  return dfs_file(items);
}

} // namespace nasshare::tests
