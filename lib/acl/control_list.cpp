#include "nasshare/acl.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/text.h"

using namespace nasshare;

struct smb_ac_list *pacl = nullptr;

int ac_list_empty(void) {
  return pacl == nullptr || pacl->count == 0 ? 1 : 0;
}

smb_ac_node *ac_get_node(void) {
  return new_node<smb_ac_node>();
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
  constexpr int last_count_to_add = 256; // so the list can reach 257, as it always could
  if (pacl == nullptr || record == nullptr || pacl->count > last_count_to_add) {
    return;
  }
  if (auto *node = ac_get_node()) {
    ac_node_copy(node, record);
    append(*pacl, node);
  }
}

smb_ac_node *ac_check_node_by_name(const char *name) {
  if (ac_list_empty() != 0 || !given(name)) {
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
  if (!listing()) {
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
