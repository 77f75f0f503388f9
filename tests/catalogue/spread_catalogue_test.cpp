// Volumes that take no copy of the catalogue, and who may write those that are spread.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace nasshare::tests {
namespace {

TEST(SpreadCatalogue, ThatNoVolumeTakesIsNotStored) {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/Music").read_only("/mnt/HD_a4").read_only("/mnt/HD_b4");
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 0);
  EXPECT_EQ(transcript().find("smbcom"), std::string::npos);
}

TEST(SpreadCatalogue, ThatOneVolumeTakesIsStored) {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/Music").read_only("/mnt/HD_b4");
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
  EXPECT_EQ(chk_share("Music"), 0);
}

// A program may run under any mask; who may read what is for root alone to write.
TEST(SpreadCatalogue, IsNeverForOthersToWrite) {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/Music");
  umask(0);
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
  EXPECT_EQ(mode(first_share_file), 0664U);
}

} // namespace
} // namespace nasshare::tests
