// The list of DFS links: records of host, share, local name and group, known by the last two.
#include "dfs/link_records.h"

#include "base/argument.h"
#include "base/debug.h"
#include "base/linked_list.h"
#include "nasshare/dfs.h"

namespace nasshare {
namespace {

Trouble links_came_with;

auto in_group(const Argument &group) {
  return [&group](const smb_dfs_node &link) { return view(link.group) == group.view(); };
}

} // namespace

const Trouble &link_trouble() {
  return links_came_with;
}

} // namespace nasshare

using namespace nasshare;

struct smb_dfs_list dfslist;
struct smb_dfs_list *pdfs = &dfslist;

int dfs_list_empty(void) {
  return pdfs->count == 0 ? 1 : 0;
}

smb_dfs_node *dfs_get_node(void) {
  return new_node_or_note<smb_dfs_node>();
}

void dfs_node_copy(smb_dfs_node *destination, const smb_dfs_node *source) {
  if (destination == nullptr || source == nullptr) {
    return;
  }
  assign(destination->host, view(source->host));
  assign(destination->share, view(source->share));
  assign(destination->local, view(source->local));
  assign(destination->group, view(source->group));
}

void dfs_add_node(const smb_dfs_node *record) {
  const Watch watch(links_came_with);
  auto *const link = record == nullptr ? nullptr : dfs_get_node();
  if (link != nullptr) {
    dfs_node_copy(link, record);
    append(*pdfs, link);
  }
}

void dfs_del_node(smb_dfs_node *node) {
  remove(*pdfs, node);
}

smb_dfs_node *dfs_check_node(const smb_dfs_node *key) {
  if (key == nullptr) {
    return nullptr;
  }
  return find(*pdfs,
              [key](const smb_dfs_node &link) { return is_link(link, view(key->group), view(key->local)); });
}

void dfs_modify_node_by_group(const char *old_group, const char *new_group) {
  if (old_group == nullptr || new_group == nullptr) {
    return;
  }
  const Argument from(old_group);
  const Argument to(new_group);
  const auto matches = in_group(from);
  for (auto &link : each(*pdfs)) {
    if (matches(link)) {
      assign(link.group, to.view());
    }
  }
}

void dfs_delete_node_by_group(const char *group) {
  if (group != nullptr) {
    const Argument deleted(group);
    remove_matching(*pdfs, in_group(deleted));
  }
}

void dfs_remove_all(void) {
  clear(*pdfs);
  links_came_with = {};
}

void dfs_print_all(void) {
  list_debug("DFS list :\n");
  for (const auto &link : each(*pdfs)) {
    list_debug("Name = %s\n", link.host);
    list_debug("share = %s\n", link.share);
    list_debug("local = %s\n", link.local);
    list_debug("group = %s\n", link.group);
  }
  list_debug("\n");
}
