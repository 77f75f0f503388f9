// The group file: reading it into the name records, and replacing it.
#include "dfs/group_store.h"

#include "acl/name_records.h"
#include "base/linked_list.h"
#include "base/presence.h"
#include "base/program_lock.h"
#include "base/text.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"

namespace nasshare {
namespace {

constexpr const char *group_file = "/etc/NAS_CFG/smbdfs_group.xml";

Trouble groups_came_with; // when they were last read

void read_group(xmlNode *item) {
  char name[name_width] = "";
  read_child(item, "group", name);
  Insert_Name_Node(name);
}

} // namespace

const Trouble &group_trouble() {
  return groups_came_with;
}

bool store_groups(Form form) {
  auto trouble = name_trouble();
  trouble |= groups_came_with;
  return store_items(group_file, each(*pnl), trouble, [form](XmlComposer &file, const smb_name_node &group) {
    file.add("group", view(group.name), form);
  });
}

} // namespace nasshare

using namespace nasshare;

void read_DFS_group_xml(void) {
  groups_came_with = {};
  const Watch watch(groups_came_with);
  if (exists_or_note(group_file)) {
    Free_Name_List();
    each_item_or_note(group_file, read_group);
  }
}

void write_DFS_group_xml(void) {
  const ProgramLock lock(dfs_groups_lock);
  static_cast<void>(store_groups(Form::markup)); // it has no result
}

void get_dfs_group_info(void) {
  Free_Name_List();
  read_DFS_group_xml();
}
