// The accounts that an access list names: users are themselves, and groups are their members.
#include "acl/list_accounts.h"

#include "acl/access_list.h"
#include "acl/account_walk.h"
#include "acl/name_records.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

void record_members_or_note(std::string_view group_name) {
  each_group_or_note([group_name](const group &entry) {
    if (group_name == entry.gr_name) {
      for (char *const *member = entry.gr_mem; *member != nullptr; ++member) {
        Insert_Name_Node(*member);
      }
    }
  });
}

} // namespace

void record_accounts_or_note(std::string_view list) {
  if (list.empty()) {
    return;
  }
  for (const auto token : Tokens(list)) {
    retrieve_user_from_group(Text<list_width>{token}.c_str());
  }
}

} // namespace nasshare

using namespace nasshare;

void retrieve_user_from_group(const char *name) {
  if (name == nullptr) {
    return;
  }
  const Watch watch(name_trouble());
  if (is_group(name)) {
    record_members_or_note(name + 1);
  } else {
    Insert_Name_Node(name);
  }
}
