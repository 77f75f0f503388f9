// Which entries of an access list stay: those whose account somebody knows.
#pragma once

#include "acl/access_list.h"
#include "acl/everyone.h"
#include "base/watch.h"
#include "nasshare/catalogue.h"

namespace nasshare {

// Drops every other entry of the list (12288 bytes). An empty list, the everyone value and "#nobody#" alone
// stay. Each of knows_user(name) and knows_group(name) tells whether there is such an account.
template <class KnowsUser, class KnowsGroup>
void keep_known_entries(char *list, KnowsUser &&knows_user, KnowsGroup &&knows_group) {
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
  assign(list_field(list), is_one_empty_name ? "##," : known.view());
}

// The same for the three lists of a share.
template <class KnowsUser, class KnowsGroup>
void keep_known_entries(smb_share &share, KnowsUser &&knows_user, KnowsGroup &&knows_group) {
  for (auto *const list : {share.read_list, share.write_list, share.invalid_users}) {
    keep_known_entries(list, knows_user, knows_group);
  }
}

} // namespace nasshare
