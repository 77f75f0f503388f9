// Adding, modifying, deleting and looking up DFS links.
#include "base/argument.h"
#include "base/linked_list.h"
#include "base/program_lock.h"
#include "base/xml_characters.h"
#include "base/xml_content.h"
#include "dfs/link_records.h"
#include "dfs/link_store.h"
#include "nasshare/dfs.h"

#include <optional>

namespace nasshare {
namespace {

bool are_given(std::initializer_list<const char *> values) {
  return std::ranges::all_of(values, is_given);
}

// A host is handed over as markup: wanted, callers write references in it. So only its own length counts.
bool is_storable_host(std::string_view host) {
  return host.size() < name_width && can_xml_hold(host);
}

// What the markup reads as.
void assign_markup(std::span<char> field, std::string_view markup) {
  Text<name_width> text;
  each_piece(markup, Form::markup, [&text](std::string_view piece) { text.append(piece); });
  assign(field, text.view());
}

std::optional<smb_dfs_node> link_of(const char *host, const char *share, const char *local,
                                    const char *group) {
  if (!is_storable_host(host) || !is_storable_value(share) || !is_storable_value(local) ||
      !is_storable_value(group)) {
    return std::nullopt;
  }
  smb_dfs_node link{};
  assign_markup(link.host, host);
  assign(link.share, share);
  assign(link.local, local);
  assign(link.group, group);
  return link;
}

// The loaded link of that identity, or null.
smb_dfs_node *load_link(const char *group, const char *local) {
  const Argument wanted_group(group);
  const Argument wanted_local(local);
  get_dfs_info();
  return find(*pdfs, [&](const smb_dfs_node &link) {
    return is_link(link, wanted_group.view(), wanted_local.view());
  });
}

std::uint32_t finish_with_links(bool is_done) {
  dfs_remove_all();
  return is_done ? 1 : 0;
}

} // namespace
} // namespace nasshare

using namespace nasshare;

uint32_t add_dfs_node(const char *host, const char *share, const char *local, const char *group) {
  if (!are_given({host, share, local, group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const auto link = link_of(host, share, local, group);
  if (!link || load_link(group, local) != nullptr) {
    return finish_with_links(false);
  }
  const auto before = pdfs->count;
  dfs_add_node(&*link);
  return finish_with_links(pdfs->count > before && store_links(Form::text));
}

uint32_t mod_dfs_node(const char *new_host, const char *new_share, const char *new_local,
                      const char *new_group, const char *old_local, const char *old_group) {
  if (!are_given({new_host, new_share, new_local, new_group, old_local, old_group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const auto changed = link_of(new_host, new_share, new_local, new_group);
  auto *const link = changed ? load_link(old_group, old_local) : nullptr;
  if (link == nullptr) {
    return finish_with_links(false);
  }
  dfs_node_copy(link, &*changed);
  return finish_with_links(store_links(Form::text));
}

uint32_t del_dfs_node(const char *local, const char *group) {
  if (!are_given({local, group})) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  auto *const link = load_link(group, local);
  if (link == nullptr) {
    return finish_with_links(false);
  }
  dfs_del_node(link);
  return finish_with_links(store_links(Form::text));
}

uint32_t chk_dfs_node_exist(const char *group, const char *local) {
  return are_given({group, local}) ? finish_with_links(load_link(group, local) != nullptr) : 0;
}

uint32_t mod_dfs_node_by_group(const char *old_group, const char *new_group) {
  if (!are_given({old_group, new_group}) || !is_storable_value(new_group)) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const Argument from(old_group);
  const Argument to(new_group);
  get_dfs_info();
  dfs_modify_node_by_group(from.c_str(), to.c_str());
  return finish_with_links(store_links(Form::text));
}

uint32_t del_dfs_node_by_group(const char *group) {
  if (!is_given(group)) {
    return 0;
  }
  const ProgramLock lock(dfs_links_lock);
  const Argument deleted(group);
  get_dfs_info();
  dfs_delete_node_by_group(deleted.c_str());
  return finish_with_links(store_links(Form::text));
}
