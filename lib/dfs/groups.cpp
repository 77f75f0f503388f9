#include "dfs/link_store.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/presence.h"
#include "support/program_lock.h"
#include "support/text.h"

using namespace nasshare;

namespace {

constexpr const char *group_file = "/etc/NAS_CFG/smbdfs_group.xml";

void read_group(xmlNode *item) {
  char name[name_width] = "";
  read_child(item, "group", name);
  Insert_Name_Node(name);
}

bool store_groups(Form form) {
  return store_dfs_items(group_file, each(*pnl), [form](xmlNode *item, const smb_name_node &group) {
    return add_value(item, "group", view(group.name), form);
  });
}

// An argument may lie in the very list that is about to be emptied. One that is longer than any name matches
// nothing.
using Name = Text<2 * name_width>;

smb_name_node *load_and_find(const Name &group) {
  get_dfs_group_info();
  return Check_Name_Node(group.c_str());
}

// The groups just were.
bool all_can_be_loaded() {
  return !load_was_troubled() && links_can_be_loaded();
}

bool finish(bool done) {
  Free_Name_List();
  return done;
}

} // namespace

void read_DFS_group_xml(void) {
  load_begins();
  if (is_there(group_file)) {
    Free_Name_List();
    each_dfs_item(group_file, read_group);
  }
}

void write_DFS_group_xml(void) {
  store_groups(Form::markup);
}

void get_dfs_group_info(void) {
  Free_Name_List();
  read_DFS_group_xml();
}

uint32_t add_dfs_group_node(const char *group) {
  if (!given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_groups_lock);
  const Name name{group};
  bool added = load_and_find(name) == nullptr && is_storable(name.view()) &&
               Insert_Name_Node(name.c_str()) != nullptr && store_groups(Form::text);
  return finish(added) ? 1 : 0;
}

uint32_t chk_dfs_group_exist(const char *group) {
  return given(group) && finish(load_and_find(Name{group}) != nullptr) ? 1 : 0;
}

// The group file comes first, then the link file: links of a group that is gone are still published. Neither
// is touched when the links, which follow their group, cannot be loaded.
uint32_t mod_dfs_group_node(const char *old_group, const char *new_group) {
  if (!given(old_group) || !given(new_group)) {
    return 0;
  }
  trace_debug("--- [%s][%s]\n", old_group, new_group);
  const ProgramLock lock(dfs_groups_lock);
  const Name from{old_group};
  const Name to{new_group};
  auto *entry = load_and_find(from);
  bool renamed = entry != nullptr && is_storable(to.view()) && all_can_be_loaded();
  if (renamed) {
    assign(entry->name, to.view());
    renamed = store_groups(Form::text);
  }
  return finish(renamed) ? mod_dfs_node_by_group(from.c_str(), to.c_str()) : 0;
}

uint32_t del_dfs_group_node(const char *group) {
  if (!given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_groups_lock);
  const Name name{group};
  auto *entry = load_and_find(name);
  bool deleted = entry != nullptr && all_can_be_loaded();
  if (deleted) {
    Delete_Name_Node(entry);
    deleted = store_groups(Form::text);
  }
  return finish(deleted) ? del_dfs_node_by_group(name.c_str()) : 0;
}
