// The file of the DFS groups.
#include "lists.h"
#include "machine.h"

#include "nasshare/acl.h"
#include "nasshare/dfs.h"

namespace nasshare::fuzzing {
namespace {

constexpr const char *group_file = "/etc/NAS_CFG/smbdfs_group.xml";

std::vector<std::string> loaded_groups() {
  get_dfs_group_info();
  require_whole(*pnl);
  std::vector<std::string> groups;
  for (const auto &group : each(*pnl)) {
    require(terminated(group.name), "every name ends within its field");
    require(can_xml_hold(view(group.name)), "no cut breaks a character");
    groups.emplace_back(group.name);
  }
  return groups;
}

} // namespace

void fuzz(std::string_view input) {
  machine::file(group_file, input);
  auto groups = loaded_groups();

  bool exists = chk_dfs_group_exist("one & more") == 1;
  require((add_dfs_group_node("one & more") == 1) != exists, "a group that is not there can be added");
  if (!exists) {
    groups.emplace_back("one & more");
  }
  require(loaded_groups() == groups, "stored groups come back as they were");

  write_DFS_group_xml();
  require(loaded_groups().size() == groups.size(), "groups that are taken as markup can be read");
}

} // namespace nasshare::fuzzing
