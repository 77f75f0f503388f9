/* What the share list holds, for tests that compare it as a whole. */
#ifndef NASSHARE_TESTS_LISTED_SHARES_H
#define NASSHARE_TESTS_LISTED_SHARES_H

#include "nasshare/catalogue.h"

#include <string>
#include <vector>

using Names = std::vector<std::string>;

/* The names of the listed shares, in list order. */
inline Names listed_names() {
  Names names;
  const smb_share *share = smbshare.head;
  for (int i = 0; i < smbshare.count; ++i, share = share->next)
    names.emplace_back(share->name);
  return names;
}

#endif
