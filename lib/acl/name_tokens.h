// The accounts of an access list, as names in the name list.
#pragma once

#include <string_view>

namespace nasshare {

// Appends every user of the list and every member of its groups to the name list; nothing for an empty list.
void name_tokens(std::string_view list);

} // namespace nasshare
