#include "acl/accounts.h"
#include "acl/known_entries.h"
#include "acl/list_text.h"
#include "acl/name_tokens.h"
#include "nasshare/acl.h"
#include "support/linked_list.h"

using namespace nasshare;

void nasshare::keep_known_entries(char *list, KnowsAccount knows_user, KnowsAccount knows_group) {
  if (!given(list) || list == everyone || list == guest_entry) {
    return;
  }
  ListBuilder known;
  for (auto token : Tokens(list)) {
    if (is_group(token) ? knows_group(token.substr(1)) : knows_user(token)) {
      known.add(token);
    }
  }
  // Every entry brings a comma, and the last one's goes; a single empty name is too short for that.
  bool too_short = known.view() == "##";
  assign(list_field(list), Text<list_width>{known.view(), too_short ? "," : ""}.view());
}

void run_check_samba_list(char *list) {
  keep_known_entries(list, user_exists, group_exists);
}

namespace {

void check_share(smb_share &share) {
  run_check_samba_list(share.read_list);
  run_check_samba_list(share.write_list);
  run_check_samba_list(share.invalid_users);

  // Who can write anyway need not be a reader; who is denied anyway need be neither.
  if (view(share.write_list) == everyone) {
    name_tokens(share.write_list);
    list_item_compare(share.read_list);
    Free_Name_List();
  }
  if (view(share.invalid_users) == everyone) {
    name_tokens(share.invalid_users);
    list_item_compare(share.read_list);
    list_item_compare(share.write_list);
    Free_Name_List();
  }
}

bool is_unreachable(const smb_share &share) {
  auto denied = view(share.invalid_users);
  return share.read_list[0] == '\0' && share.write_list[0] == '\0' &&
         (denied.empty() || denied == guest_entry);
}

} // namespace

void check_user_group(void) {
  if (pss->ads_enable == 1) {
    return; // the domain's accounts are checked against winbind instead
  }
  for (auto &share : each(*pss)) {
    check_share(share);
  }
  remove_empty_share_node();
}

void remove_empty_share_node(void) {
  remove_matching(*pss, is_unreachable);
}
