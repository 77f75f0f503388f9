#include "dfs/link_store.h"
#include "nasshare/dfs.h"
#include "support/linked_list.h"
#include "support/program_lock.h"
#include "support/text.h"

#include <algorithm>
#include <optional>

using namespace nasshare;

namespace {

bool all_given(std::initializer_list<const char *> values) {
  return std::ranges::all_of(values, given);
}

// A host is stored as it is handed over, so only its own length counts.
std::optional<smb_dfs_node> make_link(const char *host, const char *share, const char *local,
                                      const char *group) {
  bool host_fits = std::string_view(host).size() < name_width && xml_can_hold(host);
  if (!host_fits || !is_storable(share) || !is_storable(local) || !is_storable(group)) {
    return std::nullopt;
  }
  smb_dfs_node link{};
  assign(link.host, host);
  assign(link.share, share);
  assign(link.local, local);
  assign(link.group, group);
  return link;
}

// A key may lie in the very list that is about to be emptied. One that is longer than any field matches
// nothing.
using Key = Text<2 * name_width>;

// The loaded link of that identity, or null.
smb_dfs_node *load_and_find(const char *group, const char *local) {
  const Key wanted_group{group};
  const Key wanted_local{local};
  get_dfs_info();
  return find(*pdfs, [&](const smb_dfs_node &link) {
    return view(link.group) == wanted_group.view() && view(link.local) == wanted_local.view();
  });
}

std::uint32_t finish(bool done) {
  dfs_remove_all();
  return done ? 1 : 0;
}

} // namespace

uint32_t add_dfs_node(const char *host, const char *share, const char *local, const char *group) {
  if (!all_given({host, share, local, group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  auto link = make_link(host, share, local, group);
  if (!link || load_and_find(group, local) != nullptr) {
    return finish(false);
  }
  auto before = pdfs->count;
  dfs_add_node(&*link);
  return finish(pdfs->count > before && store_links(Form::text));
}

uint32_t mod_dfs_node(const char *new_host, const char *new_share, const char *new_local,
                      const char *new_group, const char *old_local, const char *old_group) {
  if (!all_given({new_host, new_share, new_local, new_group, old_local, old_group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  auto changed = make_link(new_host, new_share, new_local, new_group);
  auto *link = changed ? load_and_find(old_group, old_local) : nullptr;
  if (link == nullptr) {
    return finish(false);
  }
  dfs_node_copy(link, &*changed);
  return finish(store_links(Form::text));
}

uint32_t del_dfs_node(const char *local, const char *group) {
  if (!all_given({local, group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  auto *link = load_and_find(group, local);
  if (link == nullptr) {
    return finish(false);
  }
  dfs_del_node(link);
  return finish(store_links(Form::text));
}

uint32_t chk_dfs_node_exist(const char *group, const char *local) {
  return all_given({group, local}) ? finish(load_and_find(group, local) != nullptr) : 0;
}

uint32_t mod_dfs_node_by_group(const char *old_group, const char *new_group) {
  if (!all_given({old_group, new_group}) || !is_storable(new_group)) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const Key from{old_group};
  const Key to{new_group};
  get_dfs_info();
  dfs_modify_node_by_group(from.c_str(), to.c_str());
  return finish(store_links(Form::text));
}

uint32_t del_dfs_node_by_group(const char *group) {
  if (!given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const Key wanted{group};
  get_dfs_info();
  dfs_delete_node_by_group(wanted.c_str());
  return finish(store_links(Form::text));
}
