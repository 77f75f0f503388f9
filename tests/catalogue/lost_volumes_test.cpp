// A change never takes the shares of a volume that was not looked at whole: what is not loaded would be gone
// from every disk.
#include "appliance.h"
#include "music_and_docs.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "text.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

Appliance with_shares(const std::vector<Share> &shares) {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Films")
      .folder("/mnt/HD/HD_b2/Docs")
      .shares(share_xml(shares));
}

Share new_share() {
  return Share{"Films"}.path("/mnt/HD/HD_a2/Films").oplocks("yes").map_archive("no").everyone();
}

void expect_refused() {
  const std::string before = read_file(first_share_file);
  const std::string other_before = read_file(second_share_file);
  EXPECT_EQ(add_share(new_share()), 0);
  EXPECT_EQ(read_file(first_share_file), before);
  EXPECT_EQ(read_file(second_share_file), other_before);
}

TEST(ChangeWhileAVolume, HasNoDeviceIsRefused) {
  with_shares({music(), docs()}).no_device("sda").remove("/dev/sda");
  expect_refused();
}

// Its records say so, and are its own.
TEST(ChangeWhileAVolume, CanNeverBeAskedForItsSerialIsMade) {
  const Share own = Share(stored_share("Music").everyone()).on_disk("cant_get_serial_number");
  with_shares({own, Share(docs()).on_disk("ANOTHER-DISK")})
      .no_device("sda")
      .remove("/dev/sda")
      .unmount("/mnt/HD/HD_b2");
  EXPECT_EQ(add_share(new_share()), 1);
  EXPECT_EQ(chk_share("Music"), 0);
}

TEST(ChangeWhileAVolume, CanNeverBeAskedAndHasNoShareIsMade) {
  with_shares({docs()}).no_device("sda").remove("/dev/sda").unmount("/mnt/HD/HD_b2");
  EXPECT_EQ(add_share(new_share()), 1);
}

// As a bridge does at every request; the leftover is the other disk's, which was replaced.
TEST(ChangeWhileAVolume, NeverTellsASerialIsMade) {
  const Share own = Share(stored_share("Music").everyone()).on_disk("");
  with_shares({own, docs()})
      .disk("sda", "scsi0", "")
      .disk_status("sda", 0, 7, 0)
      .disk("sdb", "scsi1", "WD-NEW");
  EXPECT_EQ(add_share(new_share()), 1);
}

TEST(MoveToAVolume, ThatDoesNotAnswerIsRefused) {
  with_shares({docs()}).disk_status("sda", 1, 0, 0).folder("/mnt/HD/HD_a2/Docs");
  const std::string before = read_file(second_share_file);
  EXPECT_EQ(mod_share(docs().path("/mnt/HD/HD_a2/Docs").oplocks("yes").map_archive("no")), 0);
  EXPECT_EQ(read_file(second_share_file), before);
}

TEST(ChangeWhileAVolume, IsOnADiskThatIsNotListedIsRefused) {
  with_shares({music(), docs()});
  for (const char *listed :
       {"/dev/sdb: scsi1 channel=0 id=0 lun=0", "/dev/sda: scsi0 channel=0 id=0 lun=0"}) {
    Appliance{}.script("sg_scan", "echo '" + std::string(listed) + "'");
    expect_refused();
  }
}

// The record was written when the disk sat in the other bay; on loading its path moves with the disk.
TEST(ChangeWhileAVolume, OfTheOtherBayDoesNotAnswerIsRefused) {
  with_shares({music()})
      .shares("/mnt/HD_b4", share_xml({docs().path("/mnt/HD/HD_a2/Docs")}))
      .disk("sdb", "scsi1", "")
      .disk_status("sdb", 1, 0, 0);
  expect_refused();
}

// ---- What a load says of itself

TEST(LoadTrouble, TellsWhetherSharesOrAccountsMayBeMissing) {
  with_shares({music().deny("#nobody#,#alice#"), docs()});
  get_samba_info();
  EXPECT_EQ(nasshare_load_trouble(), 0);
  Appliance{}.script("sg_scan", "echo '/dev/sda: scsi0 channel=0 id=0 lun=0'");
  get_samba_info();
  EXPECT_EQ(nasshare_load_trouble(), 1);
  Appliance{}.file("/etc/passwd", "");
  get_samba_info();
  EXPECT_EQ(nasshare_load_trouble(), 2);
}

// ---- The account databases

class AccountDatabase : public testing::TestWithParam<const char *> {};

TEST_P(AccountDatabase, ThatIsNotThereLetsNoShareBeChanged) {
  with_shares({music().deny("#nobody#,#alice#,#@staff#")});
  const std::string aside = std::string(GetParam()) + ".old";
  ASSERT_EQ(std::rename(GetParam(), aside.c_str()), 0);
  expect_refused();
  ASSERT_EQ(std::rename(aside.c_str(), GetParam()), 0);
  EXPECT_EQ(add_share(new_share()), 1);
  get_samba_info();
  EXPECT_STREQ(pss->head->invalid_users, "#nobody#,#alice#,#@staff#");
}

TEST_P(AccountDatabase, ThatIsEmptyLetsNoShareBeChanged) {
  with_shares({music().deny("#nobody#,#alice#,#@staff#")}).file(GetParam(), "");
  expect_refused();
}

INSTANTIATE_TEST_SUITE_P(Local, AccountDatabase, testing::Values("/etc/passwd", "/etc/group"));

} // namespace
} // namespace nasshare::tests
