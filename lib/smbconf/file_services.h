// The neighbouring file services. Opportunistic locks are off wherever the same folder can be reached
// through another protocol.
#pragma once

#include "nasshare/support.h"
#include "support/configuration.h"

namespace nasshare {

struct FileServices {
  bool afp = configured_number("/system_mgr/afp/enable") == 1;
  bool nfs = configured_number("/system_mgr/nfs/enable") == 1;

  [[nodiscard]] bool forbid_oplocks(const char *path) const {
    return afp || (nfs && check_nfs_share(path) == 1);
  }
};

} // namespace nasshare
