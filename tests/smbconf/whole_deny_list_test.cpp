// Nobody who is denied drops out of smb.conf: a list that does not fit in Samba's form keeps the old file,
// and what is in memory stays as it was loaded.
#include "appliance.h"
#include "domain.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"
#include "share.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string account(int number) {
  return "account-with-a-name-of-some-length-" + std::to_string(1000 + number);
}

// So many that their list fits its field as it is, and not with the domain's name before each.
constexpr int most_accounts = 270;

std::string list_of_accounts() {
  std::string list = "#nobody#";
  for (int i = 0; i < most_accounts; ++i) {
    list += ",#" + account(i) + "#";
  }
  return list;
}

void add_accounts() {
  std::string passwd = read_file("/etc/passwd");
  for (int i = 0; i < most_accounts; ++i) {
    passwd += account(i) + ":x:" + std::to_string(3000 + i) + ":100::/:/bin/false\n";
  }
  Appliance{}.file("/etc/passwd", passwd);
}

Appliance machine_in_a_domain() {
  Appliance machine = Appliance::single_disks();
  configure_domain(machine);
  machine.folder("/mnt/HD/HD_a2/music");
  return machine;
}

void load(const Share &share) {
  machine_in_a_domain().ads_shares(share_xml({share}));
  add_accounts();
  get_samba_info2();
}

TEST(WholeDenyList, ThatGrowsTooLongKeepsTheOldFile) {
  load(stored_share("music").write("#alice#").deny(list_of_accounts()));
  Appliance{}.file(smb_conf, "old");
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
}

TEST(WholeDenyList, ThatGrowsTooLongLeavesTheListsAsLoaded) {
  load(stored_share("music").write("#alice#").deny(list_of_accounts()));
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_STREQ(pss->head->write_list, "#alice#");
  EXPECT_EQ(pss->head->invalid_users, list_of_accounts());
}

TEST(WholeDenyList, ThatGrowsTooLongLeavesNoEmptyFile) {
  load(stored_share("music").write("#alice#").deny(list_of_accounts()));
  Appliance{}.remove(smb_conf);
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_FALSE(exists(smb_conf));
}

TEST(WholeDenyList, OfReadersMayLoseSome) {
  load(stored_share("music").read(list_of_accounts()).deny("#nobody#"));
  EXPECT_EQ(create_smb_conf(), 0);
}

TEST(WholeDenyList, ThatAFileHoldsBeyondItsFieldIsDoubt) {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/music")
      .file(smb_conf, "old")
      .file("/mnt/HD_a4/.systemfile/.smb.xml",
            "<config><samba><item><volume_raid>1</volume_raid><hd_serial>WD-TESTDISK0001</hd_serial>"
            "<name>music</name><path>/mnt/HD/HD_a2/music</path><write_list>#alice#</write_list>"
            "<invalid_users>" +
                list_of_accounts() + "," + list_of_accounts() + "</invalid_users></item></samba></config>");
  get_samba_info2();
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
  Free_All_List();
  EXPECT_EQ(del_share("music"), 0);
}

// ---- A second time

TEST(PublishingTwice, WithoutALoadIsRefusedInADomain) {
  load(stored_share("music").write("#alice#").deny("#nobody#,#bob#"));
  EXPECT_EQ(create_smb_conf(), 0);
  const std::string published = read_file(smb_conf);
  EXPECT_TRUE(contains(published, "invalid users = \"nobody\",\"CORP+bob\"\n"));
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), published);
  get_samba_info2();
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(read_file(smb_conf), published);
}

TEST(PublishingTwice, WritesTheSameFileInLocalMode) {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/music")
      .shares(share_xml({stored_share("music").write("#alice#").deny("#nobody#,#bob#")}));
  get_samba_info2();
  EXPECT_EQ(create_smb_conf(), 0);
  const std::string published = read_file(smb_conf);
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(read_file(smb_conf), published);
}

// ---- winbind

TEST(KilledWbinfo, IsDoubt) {
  load(stored_share("music").write("#alice#").deny("#nobody#,#bob#"));
  Appliance{}.file(smb_conf, "old").script("wbinfo", "echo alice; kill -9 $$");
  ads_check_user_group();
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
}

} // namespace
} // namespace nasshare::tests
