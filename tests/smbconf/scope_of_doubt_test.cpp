// Which doubt keeps smb.conf from being written: that of the catalogue which is loaded, and no other.
#include "appliance.h"
#include "failing_groups.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "nasshare/support.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "text.h"
#include "unopenable.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *denied_staff = "invalid users = \"nobody\",\"@staff\"\n";

void begin() {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/music")
      .shares("/mnt/HD_a4", share_xml({stored_share("music").write("#alice#").deny("#@staff#")}))
      .file(smb_conf, "old");
}

void load_doubtfully() {
  groups_fail = true;
  get_samba_info2();
  groups_fail = false;
}

void expect_refusal() {
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
}

void expect_published() {
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_TRUE(contains(read_file(smb_conf), denied_staff));
}

// ---- Of the load

TEST(DoubtOfTheLoad, IsNotWipedByAQuestionToTheDfsFiles) {
  begin();
  load_doubtfully();
  EXPECT_EQ(chk_dfs_node_exist("media", "songs"), 0U);
  get_dfs_info();
  dfs_remove_all();
  get_dfs_group_info();
  Free_Name_List();
  expect_refusal();
}

TEST(DoubtOfTheLoad, IsNotWipedByASecondTry) {
  begin();
  load_doubtfully();
  expect_refusal();
  expect_refusal();
}

TEST(DoubtOfTheLoad, EndsWithTheNextLoad) {
  begin();
  load_doubtfully();
  get_samba_info2();
  expect_published();
}

TEST(DoubtOfTheLoad, OutlastsALoadThatEndsTheProcess) {
  begin();
  static std::unique_ptr<DescriptorLimit> shortage;
  const Ended ended = run_to_exit([] {
    std::atexit([] {
      shortage.reset();
      std::printf("%d", create_smb_conf());
    });
    shortage = std::make_unique<DescriptorLimit>(0);
    get_samba_info2(); // without /etc/mtab there is no volume
  });
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "IOCTL API: Create socket fail\n-1");
}

// ---- Of what is added to it

TEST(DoubtAboutTheCatalogue, ComesWithALaterCheckOfItsLists) {
  begin();
  get_samba_info2();
  groups_fail = true;
  check_user_group();
  groups_fail = false;
  expect_refusal();
}

TEST(DoubtAboutTheCatalogue, ComesWithACheckOfAListThatIsPutThere) {
  begin();
  get_samba_info2();
  auto copy = std::make_unique<smb_share>(*check_smb_share_name("music"));
  groups_fail = true;
  run_check_samba_list(copy->invalid_users);
  groups_fail = false;
  Modify_Smb_Node(copy.get());
  expect_refusal();
}

TEST(DoubtAboutTheCatalogue, ComesWithMembersThatNobodyTells) {
  begin();
  get_samba_info2();
  groups_fail = true;
  retrieve_user_from_group("@staff");
  groups_fail = false;
  rebuild_user_list_except_input(check_smb_share_name("music")->write_list);
  Free_Name_List();
  expect_refusal();
}

TEST(DoubtAboutTheCatalogue, ComesWithAListInSambasForm) {
  begin();
  Appliance{}
      .config("/system_mgr/samba/ads_enable", "1")
      .ads_shares("/mnt/HD_a4", share_xml({stored_share("music").write("#alice#").deny("#@staff#")}));
  get_samba_info2();
  groups_fail = true;
  EXPECT_EQ(create_smb_conf(), -1);
  groups_fail = false;
  expect_refusal(); // the entry is gone from memory
}

TEST(DoubtAboutTheCatalogue, ComesWithSettingsThatCannotBeRead) {
  begin();
  get_samba_info2();
  {
    const DescriptorLimit none(0);
    read_global_setting();
  }
  expect_refusal();
}

// ---- Of others

TEST(DoubtAboutOthers, AnSmbclientThatASignalEndsKeepsNothingFromBeingWritten) {
  begin();
  Appliance{}.program("/usr/bin/smbclient", "kill -KILL $$");
  get_samba_info2();
  get_host_share_name("attic");
  Free_Name_List();
  expect_published();
}

TEST(DoubtAboutOthers, AShortageInAQuestionAboutNfsKeepsNothingFromBeingWritten) {
  begin();
  Appliance{}.exports("\"/mnt/HD/HD_a2/music\" *(rw)\n");
  get_samba_info2();
  {
    const DescriptorLimit none(0);
    EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/music"), 0);
  }
  expect_published();
}

TEST(DoubtAboutOthers, ADfsFileThatCannotBeReadKeepsNothingFromBeingWritten) {
  begin();
  Appliance{}.file("/etc/NAS_CFG/smbdfs.xml", "<config><dfs/></config>");
  get_samba_info2();
  {
    const DescriptorLimit none(0);
    get_dfs_info();
  }
  dfs_remove_all();
  expect_published();
}

} // namespace
} // namespace nasshare::tests
