// One account's permissions on the listed shares: what becomes of each share's lists.
#include "acl/access_list.h"
#include "acl/everyone.h"
#include "acl/list_entry.h"
#include "acl/other_accounts.h"
#include "acl/permission.h"
#include "acl/permission_records.h"
#include "base/argument.h"
#include "base/debug.h"
#include "base/linked_list.h"
#include "catalogue/storable_record.h"
#include "model/domain_mode.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

// The list that grants the permission; null for none.
char *list_of(smb_share &share, std::uint32_t permission) {
  switch (permission) {
  case may_read:
    return share.read_list;
  case may_write:
    return share.write_list;
  case is_denied:
    return share.invalid_users;
  default:
    return nullptr;
  }
}

void remove_entry_or_note(char *list, std::string_view account) {
  if (*list == '\0') {
    return;
  }
  ListBuilder others;
  for (const auto token : Tokens(list)) {
    if (token != account) {
      others.add(token);
    }
  }
  if (!others.is_whole()) {
    note_doubt();
  }
  assign(list_field(list), others.view());
}

// A full list stays as it is, and the change is not made.
void append_entry_or_note(char *list, std::string_view account) {
  Text<list_width> longer{list};
  const auto *const comma = longer.is_empty() ? "" : ",";
  if (!longer.append_whole({comma, "#", account, "#"})) {
    note_doubt();
  }
  assign(list_field(list), longer.view());
}

void replace_list(char *list, std::string_view account) {
  ListBuilder only;
  only.add(account);
  assign(list_field(list), only.view());
}

void change_explicit_lists(smb_share &share, const Argument &account, std::uint32_t permission) {
  remove_entry_or_note(share.read_list, account.view());
  remove_entry_or_note(share.write_list, account.view());
  remove_entry_or_note(share.invalid_users, account.view());
  if (auto *const list = list_of(share, permission)) {
    append_entry_or_note(list, account.view());
  }
}

// A directory may be too large to name everyone else one by one: every other entry goes.
void change_open_domain_share(smb_share &share, const Argument &account, std::uint32_t permission) {
  share.read_list[0] = '\0';
  share.write_list[0] = '\0';
  share.invalid_users[0] = '\0';
  if (auto *const list = list_of(share, permission)) {
    replace_list(list, account.view());
  }
}

// Everyone becomes everyone else. The list that takes the account loses what it held: wanted.
void change_open_local_share(smb_share &share, const Argument &account, std::uint32_t permission,
                             char *open_list) {
  retrieve_user_from_group(account.c_str());
  if (!list_other_accounts_or_note(open_list) && open_list == share.invalid_users) {
    note_doubt(); // whoever is left out would be let in
  }
  Free_Name_List();
  if (auto *const list = list_of(share, permission)) {
    replace_list(list, account.view());
  }
}

// The first of the three lists that lets in, or keeps out, everyone; null when all are explicit.
char *open_list_of(smb_share &share) {
  for (auto *const list : {share.read_list, share.write_list, share.invalid_users}) {
    if (is_everyone(list)) {
      return list;
    }
  }
  return nullptr;
}

void change_share(smb_share &share, const Argument &account, std::uint32_t permission) {
  auto *const open_list = open_list_of(share);
  if (open_list == nullptr) {
    change_explicit_lists(share, account, permission);
  } else if (is_domain_mode()) {
    change_open_domain_share(share, account, permission);
  } else {
    const auto *const list = list_of(share, permission);
    if (list != nullptr && is_everyone(list)) {
      trace_debug("[do nothing]\n");
      return;
    }
    change_open_local_share(share, account, permission, open_list);
  }
  trace_debug("1-->%s\n", share.read_list); // wanted: scripts look for these three
  trace_debug("2-->%s\n", share.write_list);
  trace_debug("3-->%s\n", share.invalid_users);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void modify_config_permision(const char *account) {
  if (!is_list_entry(account)) {
    return;
  }
  const LoadWatch watch;
  note(permission_trouble());
  const Argument changed(account); // the name records are scratch here
  smb_share *share = nullptr;
  for (const auto &change : each(*pal)) {
    share = check_smb_share_name(change.name);
    if (share != nullptr) {
      change_share(*share, changed, change.type);
      if (!leaves_room_for_guest(*share)) {
        note_doubt();
      }
    }
  }
  // Only the last share that was named: wanted.
  const bool is_without_lists = share != nullptr && share->read_list[0] == '\0' &&
                                share->write_list[0] == '\0' && share->invalid_users[0] == '\0';
  if (is_without_lists) {
    assign(share->invalid_users, guest_entry);
  }
  remove_empty_share_node();
}
