// Domain mode: whether the appliance is a member of an Active Directory domain. The catalogue then lives in
// files of its own, and access lists name the domain's accounts.
#pragma once

#include "nasshare/catalogue.h"

namespace nasshare {

// As the catalogue object has it: only 1 means on.
inline bool is_domain_mode() {
  return pss->ads_enable == 1;
}

// Only 0 means that the name service asks local sources alone: wanted, other than is_domain_mode() has it.
inline bool is_plainly_local() {
  return pss->ads_enable == 0;
}

// Takes the switch over from the configuration database, whatever number stands there.
void read_domain_switch_or_note();

// The same, and whatever is not 1 becomes 0.
void read_domain_mode_or_note();

} // namespace nasshare
