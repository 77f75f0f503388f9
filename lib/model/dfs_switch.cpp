// Whether the appliance serves a DFS root: the configuration's switch, in the catalogue object.
#include "model/dfs_switch.h"

#include "model/settings.h"

namespace nasshare {

void read_dfs_switch_or_note() {
  pss->dfs_enable = setting_or_note("/system_mgr/samba/dfs_enable");
}

} // namespace nasshare
