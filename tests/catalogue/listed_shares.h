// What the share list holds, for tests that compare it as a whole.
#pragma once

#include "nasshare/catalogue.h"

#include <string>
#include <vector>

namespace nasshare::tests {

using Names = std::vector<std::string>;

// The names of the listed shares, in list order.
inline Names listed_names() {
  Names names;
  const smb_share *share = smbshare.head;
  for (int i = 0; i < smbshare.count; ++i, share = share->next) {
    names.emplace_back(share->name);
  }
  return names;
}

} // namespace nasshare::tests
