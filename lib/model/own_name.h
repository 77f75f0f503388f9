// The appliance's own name among the accounts that winbind lists.
#pragma once

#include "base/text.h"
#include "nasshare/catalogue.h"

namespace nasshare {

// Whether the line begins, in any letter case, with the appliance's NetBIOS name: its own computer account.
inline bool begins_with_own_name(std::string_view line) {
  const auto own_name = view(pss->netbios_name);
  return !own_name.empty() && equals_ignoring_case(line.substr(0, own_name.size()), own_name);
}

} // namespace nasshare
