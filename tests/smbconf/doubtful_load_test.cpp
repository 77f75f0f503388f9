// What is published after a load that met trouble: missing shares keep nobody from the others, but nobody is
// let in for want of an answer about accounts.
#include "appliance.h"
#include "failing_groups.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"
#include "share.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

Appliance deny_staff() {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/music")
      .shares("/mnt/HD_a4", share_xml({stored_share("music").write("#alice#").deny("#@staff#")}))
      .file(smb_conf, "old");
  return machine;
}

int published() {
  get_samba_info2();
  return create_smb_conf();
}

TEST(DoubtfulLoad, OfAccountsKeepsTheOldFile) {
  deny_staff();
  groups_fail = true;
  EXPECT_EQ(published(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
  groups_fail = false;
  EXPECT_EQ(published(), 0);
  EXPECT_NE(read_file(smb_conf).find("invalid users = \"nobody\",\"@staff\"\n"), std::string::npos);
}

TEST(DoubtfulLoad, OfAccountsMakesNoFile) {
  deny_staff().remove(smb_conf);
  groups_fail = true;
  EXPECT_EQ(published(), -1);
  EXPECT_FALSE(exists(smb_conf));
}

TEST(DoubtfulLoad, OfADiskPublishesTheSharesOfTheOther) {
  deny_staff().disk_fails("sdb");
  EXPECT_EQ(published(), 0);
  EXPECT_NE(read_file(smb_conf).find("[ music ]"), std::string::npos);
}

TEST(DoubtfulLoad, IsNotOneWithoutRecycleDirectories) {
  deny_staff();
  get_samba_info2();
  pss->ads_enable = 1;
  {
    const DescriptorLimit two_folders(2); // and no pipe from wbinfo
    create_recycle_user_directory("/mnt/HD/HD_a2/recycle");
  }
  EXPECT_EQ(names_in("/mnt/HD/HD_a2/recycle"), Names{"nobody"});
  EXPECT_EQ(create_smb_conf(), 0);
}

} // namespace
} // namespace nasshare::tests
