// Which entries of an access list stay: those whose account somebody knows.
#include "acl/known_entries.h"

#include "acl/access_list.h"
#include "acl/accounts.h"
#include "acl/everyone.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

namespace nasshare {

void keep_known_entries(char *list, KnowsAccount knows_user, KnowsAccount knows_group) {
  if (!is_given(list) || is_everyone(list) || list == guest_entry) {
    return;
  }
  ListBuilder known;
  for (const auto token : Tokens(list)) {
    if (is_group(token) ? knows_group(token.substr(1)) : knows_user(token)) {
      known.add(token);
    }
  }
  if (!known.is_whole()) {
    note_doubt(); // the list may be that of those who are denied
  }
  // A list of one empty name gets a comma behind it: wanted, programs have always read it so.
  const bool is_one_empty_name = known.view() == "##";
  assign(list_field(list), Text<list_width>{known.view(), is_one_empty_name ? "," : ""}.view());
}

void keep_known_entries(smb_share &share, KnowsAccount knows_user, KnowsAccount knows_group) {
  for (auto *const list : {share.read_list, share.write_list, share.invalid_users}) {
    keep_known_entries(list, knows_user, knows_group);
  }
}

} // namespace nasshare

using namespace nasshare;

void run_check_samba_list(char *list) {
  const LoadWatch watch;
  keep_known_entries(list, user_exists_or_note, group_exists_or_note);
}
