// What the name list and the share list hold.
#include "listed.h"

#include "fields.h"
#include "nasshare/acl.h"
#include "share.h"

namespace nasshare::tests {

Names listed_names() {
  Names names;
  for (const smb_name_node *node : nodes_of(namelist)) {
    names.emplace_back(node->name);
  }
  return names;
}

Names listed_shares() {
  Names names;
  for (const smb_share *share : nodes_of(smbshare)) {
    names.emplace_back(share->name);
  }
  return names;
}

std::ostream &operator<<(std::ostream &out, const Lists &lists) {
  return out << "read [" << lists.read << "] write [" << lists.write << "] deny [" << lists.deny << "]";
}

Lists lists_of(const smb_share &share) {
  return {share.read_list, share.write_list, share.invalid_users};
}

Lists lists_of(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  return share == nullptr ? no_such_share() : lists_of(*share);
}

Lists no_such_share() {
  return {"no", "such", "share"};
}

smb_share *list_share(const char *name, const Lists &lists) {
  smb_share *share = Insert_Smb_Node(Share{name});
  put(share->read_list, lists.read);
  put(share->write_list, lists.write);
  put(share->invalid_users, lists.deny);
  return share;
}

} // namespace nasshare::tests
