// The access-control records: what a host program says of one account's shares; the host sets the list up.
#include "base/debug.h"
#include "base/linked_list.h"
#include "base/text.h"
#include "nasshare/acl.h"

using namespace nasshare;

struct smb_ac_list *pacl = nullptr;

int ac_list_empty(void) {
  return pacl == nullptr || pacl->count == 0 ? 1 : 0;
}

smb_ac_node *ac_get_node(void) {
  return new_node_or_note<smb_ac_node>();
}

void ac_node_copy(smb_ac_node *destination, const smb_ac_node *source) {
  if (destination == nullptr || source == nullptr) {
    return;
  }
  assign(destination->name, view(source->name));
  assign(destination->read, view(source->read));
  assign(destination->write, view(source->write));
  assign(destination->deny, view(source->deny));
  destination->exist = source->exist;
}

void ac_add_node(const smb_ac_node *record) {
  constexpr int last_count_to_add = 256; // so the list can reach 257: wanted
  if (pacl == nullptr || record == nullptr || pacl->count > last_count_to_add) {
    return;
  }
  if (auto *const node = ac_get_node()) {
    ac_node_copy(node, record);
    append(*pacl, node);
  }
}

smb_ac_node *ac_check_node_by_name(const char *name) {
  if (ac_list_empty() != 0 || !is_given(name)) {
    return nullptr;
  }
  return find(*pacl, [name](const smb_ac_node &node) { return view(node.name) == name; });
}

void ac_remove_all(void) {
  if (pacl != nullptr) {
    clear(*pacl);
  }
}

void ac_print_all(void) {
  if (!is_listing()) {
    return;
  }
  list_debug("AC list :\n=============================");
  if (pacl != nullptr) {
    for (const auto &node : each(*pacl)) {
      list_debug("\nname  = %s\n", node.name);
      list_debug("read  = %s\n", node.read);
      list_debug("write = %s\n", node.write);
      list_debug("deny  = %s\n", node.deny);
      list_debug("exist = %d\n", node.exist);
    }
  }
  list_debug("\n");
}
