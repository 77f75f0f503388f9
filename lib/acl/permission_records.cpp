// The permission records: on which shares one account's permission changes, and to what.
#include "acl/permission_records.h"

#include "acl/permission.h"
#include "base/linked_list.h"
#include "base/text.h"
#include "model/automatic_shares.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

Trouble permissions_came_with;

smb_acnt_node *append_share(std::string_view share, std::uint32_t permission) {
  const Watch watch(permissions_came_with);
  auto *const node = is_automatic_name(share) ? nullptr : get_acnt_node();
  if (node != nullptr) {
    assign(node->name, share);
    node->type = permission;
    append(*pal, node);
  }
  return node;
}

// The names are separated by colons.
void append_shares(std::string_view names, std::uint32_t permission) {
  while (!names.empty()) {
    const auto name = names.substr(0, names.find(':'));
    if (!name.empty()) {
      append_share(name, permission);
    }
    names.remove_prefix(std::min(name.size() + 1, names.size()));
  }
}

} // namespace

Trouble &permission_trouble() {
  return permissions_came_with;
}

} // namespace nasshare

using namespace nasshare;

struct smb_acnt_list acntlist;
struct smb_acnt_list *pal = &acntlist;

int is_acnt_empty(void) {
  return pal->count == 0 ? 1 : 0;
}

smb_acnt_node *get_acnt_node(void) {
  return new_node_or_note<smb_acnt_node>();
}

smb_acnt_node *insert_acnt_node(const char *share, uint32_t type) {
  return share == nullptr ? nullptr : append_share(share, type);
}

void ac_put_acnt(const smb_ac_node *record) {
  if (record != nullptr) {
    append_shares(view(record->read), may_read);
    append_shares(view(record->write), may_write);
    append_shares(view(record->deny), is_denied);
  }
}

void free_acnt_list(void) {
  clear(*pal);
  permissions_came_with = {};
}
