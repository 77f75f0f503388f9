// fix_share_name: a stored name becomes the volume's configured one.
#include "fields.h"
#include "nasshare/catalogue.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string renamed(const std::string &configured, int volume) {
  put(pss->vol_share_name[volume], configured);
  char name[512] = "Volume_1";
  fix_share_name(name, volume);
  return name;
}

TEST(FixShareName, TakesTheConfiguredName) {
  EXPECT_EQ(renamed("Family", 0), "Family");
  EXPECT_EQ(renamed("Work", 1), "Work");
  EXPECT_EQ(renamed(std::string(511, 'n'), 0), std::string(511, 'n'));
}

TEST(FixShareName, KeepsTheNameWhenNoneIsConfigured) {
  put(pss->vol_share_name[1], "Work");
  EXPECT_EQ(renamed("", 0), "Volume_1");
}

TEST(FixShareName, KnowsNoOtherVolumes) {
  char name[512] = "Volume_1";
  put(pss->vol_share_name[0], "Family");
  put(pss->vol_share_name[1], "Work");
  fix_share_name(name, -1);
  fix_share_name(name, 2);
  EXPECT_STREQ(name, "Volume_1");
  fix_share_name(nullptr, 0);
}

} // namespace
} // namespace nasshare::tests
