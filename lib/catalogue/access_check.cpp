// The check of every share's lists on loading: accounts that nobody knows go, and shares that nobody can
// enter then.
#include "acl/access_list.h"
#include "acl/everyone.h"
#include "acl/known_entries.h"
#include "acl/list_accounts.h"
#include "acl/remembered_accounts.h"
#include "base/linked_list.h"
#include "model/domain_mode.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

// Whoever the everyone list covers need not stand in the others.
void leave_to_everyone(std::string_view everyone_list, std::initializer_list<char *> others) {
  record_accounts_or_note(everyone_list);
  std::ranges::for_each(others, list_item_compare);
  Free_Name_List();
}

void check_share(smb_share &share, RememberedAccounts &users, RememberedAccounts &groups) {
  keep_known_entries(
      share, [&users](std::string_view name) { return users.exists_or_note(name); },
      [&groups](std::string_view name) { return groups.exists_or_note(name); });
  if (is_everyone(view(share.write_list))) {
    leave_to_everyone(share.write_list, {share.read_list});
  }
  if (is_everyone(view(share.invalid_users))) {
    leave_to_everyone(share.invalid_users, {share.read_list, share.write_list});
  }
}

bool is_empty_share(const smb_share &share) {
  const auto denied = view(share.invalid_users);
  return share.read_list[0] == '\0' && share.write_list[0] == '\0' &&
         (denied.empty() || denied == guest_entry);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void check_user_group(void) {
  if (is_domain_mode()) {
    return; // programs check a domain's accounts when they want to, with ads_check_user_group()
  }
  const LoadWatch watch;
  RememberedUsers users;
  RememberedGroups groups;
  for (auto &share : each(*pss)) {
    check_share(share, users, groups);
  }
  remove_empty_share_node();
}

void remove_empty_share_node(void) {
  remove_matching(*pss, is_empty_share);
}
