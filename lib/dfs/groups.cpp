// Adding, renaming and deleting DFS groups; a group's links follow it.
#include "base/argument.h"
#include "base/debug.h"
#include "base/program_lock.h"
#include "dfs/group_store.h"
#include "dfs/link_store.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"

namespace nasshare {
namespace {

smb_name_node *load_group(const Argument &group) {
  get_dfs_group_info();
  return Check_Name_Node(group.c_str());
}

// A group's change is begun only when its links, which follow it, can be loaded too.
bool can_change_group() {
  return !group_trouble() && can_load_links();
}

bool finish_with_groups(bool is_done) {
  Free_Name_List();
  return is_done;
}

} // namespace
} // namespace nasshare

using namespace nasshare;

uint32_t add_dfs_group_node(const char *group) {
  if (!is_given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_groups_lock);
  const Argument name(group);
  const bool is_added = load_group(name) == nullptr && is_storable_value(name.view()) &&
                        Insert_Name_Node(name.c_str()) != nullptr && store_groups(Form::text);
  return finish_with_groups(is_added) ? 1 : 0;
}

uint32_t chk_dfs_group_exist(const char *group) {
  return is_given(group) && finish_with_groups(load_group(Argument(group)) != nullptr) ? 1 : 0;
}

// First the group file, then the link file: should the second fail, the links are still there, under the old
// name.
uint32_t mod_dfs_group_node(const char *old_group, const char *new_group) {
  if (!is_given(old_group) || !is_given(new_group)) {
    return 0;
  }
  trace_debug("--- [%s][%s]\n", old_group, new_group); // wanted: scripts look for it
  const ProgramLock lock(dfs_groups_lock);
  const Argument from(old_group);
  const Argument to(new_group);
  auto *const entry = load_group(from);
  bool is_renamed = entry != nullptr && is_storable_value(to.view()) && can_change_group();
  if (is_renamed) {
    assign(entry->name, to.view());
    is_renamed = store_groups(Form::text);
  }
  return finish_with_groups(is_renamed) ? mod_dfs_node_by_group(from.c_str(), to.c_str()) : 0;
}

uint32_t del_dfs_group_node(const char *group) {
  if (!is_given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_groups_lock);
  const Argument name(group);
  auto *const entry = load_group(name);
  bool is_deleted = entry != nullptr && can_change_group();
  if (is_deleted) {
    Delete_Name_Node(entry);
    is_deleted = store_groups(Form::text);
  }
  return finish_with_groups(is_deleted) ? del_dfs_node_by_group(name.c_str()) : 0;
}
