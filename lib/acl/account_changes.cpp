#include "acl/list_text.h"
#include "catalogue/load_catalogue.h"
#include "catalogue/store_catalogue.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/trouble.h"
#include "support/xml.h"

using namespace nasshare;

namespace {

enum Permission : std::uint32_t { no_permission = 0, may_read = 1, may_write = 2, is_denied = 3 };

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

void remove_account(char *list, std::string_view account) {
  if (*list == '\0') {
    return;
  }
  ListBuilder others;
  for (auto token : Tokens(list)) {
    if (token != account) {
      others.add(token);
    }
  }
  assign(list_field(list), others.view());
}

void append_account(char *list, std::string_view account) {
  auto comma = *list == '\0' ? "" : ",";
  Text<list_width> longer{list};
  longer.append_whole({comma, "#", account, "#"});
  assign(list_field(list), longer.view());
}

void replace_list(char *list, std::string_view account) {
  ListBuilder only;
  only.add(account);
  assign(list_field(list), only.view());
}

void change_explicit_lists(smb_share &share, const char *account, std::uint32_t permission) {
  remove_account(share.read_list, account);
  remove_account(share.write_list, account);
  remove_account(share.invalid_users, account);
  if (auto *list = list_of(share, permission)) {
    append_account(list, account);
  }
}

// A domain's accounts cannot be enumerated one by one: every other entry goes.
void change_open_domain_share(smb_share &share, const char *account, std::uint32_t permission) {
  share.read_list[0] = '\0';
  share.write_list[0] = '\0';
  share.invalid_users[0] = '\0';
  if (auto *list = list_of(share, permission)) {
    replace_list(list, account);
  }
}

// Everyone becomes everyone else. The list that takes the account loses what it held: that is kept as it is.
void change_open_local_share(smb_share &share, const char *account, std::uint32_t permission,
                             char *open_list) {
  retrieve_user_from_group(account);
  rebuild_user_list_except_input(open_list);
  Free_Name_List();
  if (auto *list = list_of(share, permission)) {
    replace_list(list, account);
  }
}

// The first of the three lists that lets in, or keeps out, everyone; null when all are explicit.
char *open_list_of(smb_share &share) {
  for (auto *list : {share.read_list, share.write_list, share.invalid_users}) {
    if (std::string_view(list) == everyone) {
      return list;
    }
  }
  return nullptr;
}

// A name that the grammar of lists or XML cannot hold would come back as another one, or not at all.
bool can_stand_in_list(std::string_view account) {
  return account.size() < name_width && account.find_first_of(list_delimiters) == std::string_view::npos &&
         xml_can_hold(account);
}

void change_share(smb_share &share, const char *account, std::uint32_t permission) {
  auto *open_list = open_list_of(share);
  if (open_list == nullptr) {
    change_explicit_lists(share, account, permission);
  } else if (pss->ads_enable == 1) {
    change_open_domain_share(share, account, permission);
  } else {
    const auto *list = list_of(share, permission);
    if (list != nullptr && std::string_view(list) == everyone) {
      trace_debug("[do nothing]\n");
      return;
    }
    change_open_local_share(share, account, permission, open_list);
  }
  trace_debug("1-->%s\n", share.read_list);
  trace_debug("2-->%s\n", share.write_list);
  trace_debug("3-->%s\n", share.invalid_users);
}

} // namespace

void modify_config_permision(const char *account) {
  if (!given(account) || !can_stand_in_list(account)) {
    return;
  }
  smb_share *share = nullptr;
  for (const auto &change : each(*pal)) {
    share = check_smb_share_name(change.name);
    if (share != nullptr) {
      change_share(*share, account, change.type);
    }
  }
  bool without_lists = share != nullptr && share->read_list[0] == '\0' && share->write_list[0] == '\0' &&
                       share->invalid_users[0] == '\0';
  if (without_lists) {
    assign(share->invalid_users, guest_entry);
  }
  remove_empty_share_node();
}

int acnt_mod_share(const char *account) {
  if (!given(account) || !can_stand_in_list(account) || is_acnt_empty() != 0) {
    return 0;
  }
  load_begins();
  ProgramLock lock(catalogue_lock);
  const Text<list_width> name{account}; // it may lie in the very list that the load empties
  load_catalogue();
  modify_config_permision(name.c_str());
  free_acnt_list();
  return store_catalogue(Print::nothing, lock);
}
