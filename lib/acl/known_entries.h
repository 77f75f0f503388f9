// The entries of an access list whose account somebody knows.
#pragma once

#include "nasshare/catalogue.h"

#include <string_view>

namespace nasshare {

using KnowsAccount = bool (*)(std::string_view name);

// Drops every other entry of the list (12288 bytes). An empty list, the everyone value and "#nobody#" alone
// stay.
void keep_known_entries(char *list, KnowsAccount knows_user, KnowsAccount knows_group);

// The same for the three lists of a share.
void keep_known_entries(smb_share &share, KnowsAccount knows_user, KnowsAccount knows_group);

} // namespace nasshare
