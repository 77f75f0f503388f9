// Whether the appliance serves a DFS root.
#pragma once

#include "nasshare/catalogue.h"

namespace nasshare {

// As the catalogue object has it: only 1 means on.
inline bool is_dfs_on() {
  return pss->dfs_enable == 1;
}

// Takes the switch over from the configuration database, whatever number stands there.
void read_dfs_switch_or_note();

} // namespace nasshare
