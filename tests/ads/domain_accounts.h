// The accounts that winbind lists.
#pragma once

#include "domain.h"

#include <string>

namespace nasshare::tests {

// wbinfo with these users and groups.
inline void list_accounts(const std::string &users, const std::string &groups = "") {
  Appliance{}
      .file("/tmp/users", users)
      .file("/tmp/groups", groups)
      .script("wbinfo", "case $1 in -u) cat /tmp/users ;; -g) cat /tmp/groups ;; *) exit 1 ;; esac");
  in_a_domain();
}

} // namespace nasshare::tests
