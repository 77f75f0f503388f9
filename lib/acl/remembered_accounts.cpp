// Accounts and groups, each asked for once.
#include "acl/remembered_accounts.h"

#include "acl/account_walk.h"
#include "acl/accounts.h"
#include "base/watch.h"

namespace nasshare {
namespace {

// A look-up reads the local files up to the account that it finds, a walk to their end.
constexpr int look_ups_before_the_walk = 4;

void walk_users_or_note(RememberedAccounts &accounts) {
  each_account_or_note([&accounts](const passwd &account) { accounts.remember(account.pw_name); });
}

void walk_groups_or_note(RememberedAccounts &accounts) {
  each_group_or_note([&accounts](const group &entry) { accounts.remember(entry.gr_name); });
}

} // namespace

RememberedAccounts::RememberedAccounts(LookUp look_up_or_note, Walk walk_or_note)
    : look_up_or_note_(look_up_or_note), walk_or_note_(walk_or_note) {}

bool RememberedAccounts::exists_or_note(std::string_view name) {
  if (known_.contains(name)) {
    return true;
  }
  if (unknown_.contains(name)) {
    return false;
  }
  if (look_ups_ == look_ups_before_the_walk) {
    walk_or_note_(*this);
  }
  ++look_ups_;
  if (known_.contains(name)) {
    return true;
  }
  const Watch watch;
  const bool is_known = look_up_or_note_(name);
  if (!watch.seen()) {
    static_cast<void>((is_known ? known_ : unknown_).insert(name)); // without memory it is asked again
  }
  return is_known;
}

RememberedUsers::RememberedUsers() : RememberedAccounts(user_exists_or_note, walk_users_or_note) {}

RememberedGroups::RememberedGroups() : RememberedAccounts(group_exists_or_note, walk_groups_or_note) {}

} // namespace nasshare
