// The neighbouring file services. Opportunistic locks are off wherever the same folder can be reached through
// another protocol.
#pragma once

#include "model/nfs_exports.h"
#include "model/settings.h"

namespace nasshare {

struct FileServices {
  FileServices() {
    if (nfs && !afp) {
      exports.read_or_note();
    }
  }

  bool afp = is_on_or_note("/system_mgr/afp/enable");
  bool nfs = is_on_or_note("/system_mgr/nfs/enable");
  NfsExports exports;

  [[nodiscard]] bool forbid_oplocks_or_note(std::string_view path) const {
    return afp || (nfs && exports.contain_or_note(path));
  }
};

} // namespace nasshare
