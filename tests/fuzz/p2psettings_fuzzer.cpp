// The settings of the download service: /etc/exports, then the settings.
#include "lists.h"
#include "machine.h"

#include "nasshare/special.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  machine::file("/etc/NAS_CFG/config.xml",
                "<config><system_mgr><nfs><enable>1</enable></nfs></system_mgr></config>");
  machine::file("/etc/exports", parts.next());
  machine::file("/etc/NAS_CFG/p2psettings.xml", parts.next());
  create_p2p_share();
  require_catalogue();
  require(pss->count <= 1, "there is one share at most");
  for (const auto &share : each(*pss)) {
    auto path = view(share.path);
    require(path == "/mnt/HD/HD_a2/P2P" || path == "/mnt/HD/HD_b2/P2P", "the share is one of two folders");
    require(view(share.name) == "P2P", "the share has its own name");
  }
}

} // namespace nasshare::fuzzing
