// Domain mode: the configuration's switch, in the catalogue object.
#include "model/domain_mode.h"

#include "model/settings.h"

namespace nasshare {

void read_domain_switch_or_note() {
  pss->ads_enable = setting_or_note("/system_mgr/samba/ads_enable");
}

void read_domain_mode_or_note() {
  read_domain_switch_or_note();
  if (!is_domain_mode()) {
    pss->ads_enable = 0;
  }
}

} // namespace nasshare
