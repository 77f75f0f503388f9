// The accounts that winbind lists.
#pragma once

#include <string_view>

namespace nasshare {

// Whether the line begins, in any letter case, with the appliance's NetBIOS name: its own computer account.
bool begins_with_own_name(std::string_view line);

} // namespace nasshare
