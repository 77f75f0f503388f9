// The name records: plain names, the scratch of the list checks, and the DFS groups while they are loaded.
#include "acl/name_records.h"

#include "base/debug.h"
#include "base/linked_list.h"
#include "base/text.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

Trouble names_came_with;

} // namespace

Trouble &name_trouble() {
  return names_came_with;
}

} // namespace nasshare

using namespace nasshare;

struct smb_name_list namelist;
struct smb_name_list *pnl = &namelist;

int Is_Name_Empty(void) {
  return pnl->count == 0 ? 1 : 0;
}

smb_name_node *Insert_Name_Node(const char *name) {
  const Watch watch(names_came_with);
  auto *const node = name == nullptr ? nullptr : new_node_or_note<smb_name_node>();
  if (node != nullptr) {
    assign(node->name, name);
    append(*pnl, node);
  }
  return node;
}

smb_name_node *Check_Name_Node(const char *name) {
  if (name == nullptr) {
    return nullptr;
  }
  return find(*pnl, [name](const smb_name_node &node) { return view(node.name) == name; });
}

void Delete_Name_Node(smb_name_node *node) {
  remove(*pnl, node);
}

void Free_Name_List(void) {
  clear(*pnl);
  names_came_with = {};
}

void Print_Name_List(void) {
  for (const auto &node : each(*pnl)) {
    list_debug("Name = %s\n", node.name);
  }
}
