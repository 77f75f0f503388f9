// "Everyone but these": the accounts of the system that are not in the name records, each by its name.
#include "acl/access_list.h"
#include "acl/account_walk.h"
#include "acl/name_records.h"
#include "base/debug.h"
#include "model/load_verdict.h"
#include "model/skipped_accounts.h"
#include "nasshare/acl.h"

using namespace nasshare;

char *rebuild_user_list_except_input(char *list) {
  if (list == nullptr) {
    return nullptr;
  }
  const LoadWatch watch;
  note(name_trouble());
  trace_debug("$$$list[%s]\n", list); // the marks are wanted: scripts look for them
  ListBuilder others;
  each_account_or_note([&others](const passwd &account) {
    if (!is_among(accounts_without_list_entry, account.pw_name) &&
        Check_Name_Node(account.pw_name) == nullptr) {
      others.add(account.pw_name);
    }
  });
  assign(list_field(list), others.view());
  trace_debug("$$$[%s]\n", list);
  return list;
}
