// The neighbouring file services. Opportunistic locks are off wherever the same folder can be reached
// through another protocol.
#pragma once

#include "nasshare/platform.h"
#include "nasshare/support.h"

namespace nasshare {

struct FileServices {
  bool afp = xml_get_int("/system_mgr/afp/enable") == 1;
  bool nfs = xml_get_int("/system_mgr/nfs/enable") == 1;

  [[nodiscard]] bool forbid_oplocks(const char *path) const {
    return afp || (nfs && check_nfs_share(path) == 1);
  }
};

} // namespace nasshare
