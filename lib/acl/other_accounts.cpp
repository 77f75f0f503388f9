// "Everyone but these": the accounts of the system that are not in the name records, each by its name.
#include "acl/other_accounts.h"

#include "acl/access_list.h"
#include "acl/account_walk.h"
#include "acl/list_entry.h"
#include "acl/name_records.h"
#include "base/debug.h"
#include "model/load_verdict.h"
#include "model/skipped_accounts.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

// In a list it would be another account otherwise, or several, or a group.
bool is_listed_as_itself(const passwd &account) {
  return is_list_entry(account.pw_name) && account.pw_name[0] != '@';
}

} // namespace

bool list_other_accounts_or_note(char *list) {
  note(name_trouble());
  trace_debug("$$$list[%s]\n", list); // the marks are wanted: scripts look for them
  ListBuilder others;
  bool can_all_be_listed = true;
  each_account_or_note([&](const passwd &account) {
    if (is_among(accounts_without_list_entry, account.pw_name) ||
        Check_Name_Node(account.pw_name) != nullptr) {
      return;
    }
    if (is_listed_as_itself(account)) {
      others.add(account.pw_name);
    } else {
      can_all_be_listed = false;
    }
  });
  assign(list_field(list), others.view());
  trace_debug("$$$[%s]\n", list);
  return can_all_be_listed && others.is_whole();
}

} // namespace nasshare

using namespace nasshare;

char *rebuild_user_list_except_input(char *list) {
  if (list != nullptr) {
    const LoadWatch watch;
    static_cast<void>(list_other_accounts_or_note(list)); // the list is the answer
  }
  return list;
}
