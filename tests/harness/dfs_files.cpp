// The DFS files and the link list.
#include "dfs_files.h"

#include "fields.h"
#include "listed.h"
#include "xml.h"

namespace nasshare::tests {

namespace {

std::string dfs_file(const std::string &items) {
  return config_file(element_around(1, "dfs", items));
}

} // namespace

std::ostream &operator<<(std::ostream &out, const Link &link) {
  return out << link.host << "|" << link.share << "|" << link.local << "|" << link.group;
}

smb_dfs_node record_of(const Link &link) {
  smb_dfs_node record{};
  put(record.host, link.host);
  put(record.share, link.share);
  put(record.local, link.local);
  put(record.group, link.group);
  return record;
}

void list_link(const Link &link) {
  const smb_dfs_node record = record_of(link);
  dfs_add_node(&record);
}

Links listed_links() {
  Links links;
  for (const smb_dfs_node *node : nodes_of(dfslist)) {
    links.push_back({node->host, node->share, node->local, node->group});
  }
  return links;
}

Links stored_links() {
  get_dfs_info();
  Links links = listed_links();
  dfs_remove_all();
  return links;
}

std::string link_item(const Link &link) {
  return element_around(2, "item",
                        element_line(3, "host", link.host) + element_line(3, "share", link.share) +
                            element_line(3, "local", link.local) + element_line(3, "group", link.group));
}

std::string group_item(const std::string &group) {
  return element_around(2, "item", element_line(3, "group", group));
}

std::string link_file(const Links &links) {
  std::string items;
  for (const Link &link : links) {
    items += link_item(link);
  }
  return dfs_file(items);
}

std::string group_file(const std::vector<std::string> &groups) {
  std::string items;
  for (const std::string &group : groups) {
    items += group_item(group);
  }
  return dfs_file(items);
}

} // namespace nasshare::tests
