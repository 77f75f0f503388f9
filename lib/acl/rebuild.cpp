#include "acl/account_walk.h"
#include "acl/list_text.h"
#include "acl/name_tokens.h"
#include "nasshare/acl.h"
#include "support/debug.h"

#include <algorithm>
#include <array>

using namespace nasshare;

namespace {

bool is_system_account(std::string_view name) {
  constexpr std::array<std::string_view, 6> accounts{"root",  "nobody", "ftp",
                                                     "admin", "sshd",   "squeezecenter"};
  return std::ranges::find(accounts, name) != accounts.end();
}

} // namespace

char *rebuild_user_list_except_input(char *list) {
  if (list == nullptr) {
    return nullptr;
  }
  trace_debug("$$$list[%s]\n", list);
  ListBuilder others;
  each_account([&others](const passwd &account) {
    if (!is_system_account(account.pw_name) && Check_Name_Node(account.pw_name) == nullptr) {
      others.add(account.pw_name);
    }
  });
  assign(list_field(list), others.view());
  trace_debug("$$$[%s]\n", list);
  return list;
}

void rebuld_input_data(smb_share *record) {
  if (record == nullptr) {
    return;
  }
  auto readers = view(record->read_list);
  bool all_write = view(record->write_list) == everyone;
  bool all_denied = view(record->invalid_users) == everyone;
  if (all_write && all_denied) {
    return;
  }
  auto &other_list = all_denied ? record->write_list : record->invalid_users;
  if ((!all_write && !all_denied) || (readers.empty() && view(other_list).empty())) {
    list_debug("rebuld_input_data return!!\n");
    return;
  }
  list_debug("run rebuld_input_data! [%d][%d]\n", all_write ? 1 : 0, all_denied ? 1 : 0);
  name_tokens(readers);
  name_tokens(view(other_list));
  rebuild_user_list_except_input(all_denied ? record->invalid_users : record->write_list);
  Free_Name_List();
}
