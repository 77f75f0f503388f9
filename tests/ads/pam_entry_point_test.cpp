// ads_create_pam_samba, which does nothing.
#include "appliance.h"
#include "nasshare/ads.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

TEST(PamEntryPoint, GivesItsArgumentBackAndWritesNothing) {
  const auto before = names_in("/etc/pam.d");
  for (const int value : {0, 1, -1, 2147483647}) {
    EXPECT_EQ(ads_create_pam_samba(value), value);
  }
  EXPECT_EQ(names_in("/etc/pam.d"), before);
}

} // namespace
} // namespace nasshare::tests
