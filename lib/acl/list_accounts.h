// The accounts that an access list names, its groups' members included, as name records.
#pragma once

#include <string_view>

namespace nasshare {

// Appends every user of the list and every member of its groups; nothing for an empty list. That the group
// database cannot be read is noted.
void record_accounts_or_note(std::string_view list);

} // namespace nasshare
