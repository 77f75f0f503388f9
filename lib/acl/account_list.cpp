#include "nasshare/acl.h"
#include "support/linked_list.h"
#include "support/text.h"

using namespace nasshare;

struct smb_acnt_list acntlist;
struct smb_acnt_list *pal = &acntlist;

namespace {

// Removable disks and the download folders never take permissions of an account.
bool is_automatic_share(std::string_view name) {
  return contains(name, "USBDisk1") || name == "P2P" || name == "aMule";
}

smb_acnt_node *append_share(std::string_view share, std::uint32_t type) {
  auto *node = is_automatic_share(share) ? nullptr : get_acnt_node();
  if (node != nullptr) {
    assign(node->name, share);
    node->type = type;
    append(*pal, node);
  }
  return node;
}

void append_shares(std::string_view shares, std::uint32_t type) {
  while (!shares.empty()) {
    auto name = shares.substr(0, shares.find(':'));
    if (!name.empty()) {
      append_share(name, type);
    }
    shares.remove_prefix(std::min(name.size() + 1, shares.size()));
  }
}

} // namespace

int is_acnt_empty(void) {
  return pal->count == 0 ? 1 : 0;
}

smb_acnt_node *get_acnt_node(void) {
  return new_node<smb_acnt_node>();
}

smb_acnt_node *insert_acnt_node(const char *share, uint32_t type) {
  return share == nullptr ? nullptr : append_share(share, type);
}

void ac_put_acnt(const smb_ac_node *record) {
  if (record != nullptr) {
    append_shares(view(record->read), 1);
    append_shares(view(record->write), 2);
    append_shares(view(record->deny), 3);
  }
}

void free_acnt_list(void) {
  clear(*pal);
}
