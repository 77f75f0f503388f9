// What could not be loaded whole is not stored: the files know better.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

// A share on the second of the two disks.
Appliance two_disks() {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/new")
      .folder("/mnt/HD/HD_b2/Music")
      .shares(share_xml({Share{"Music"}.path("/mnt/HD/HD_b2/Music").on_disk("WD-TESTDISK0002").everyone()}));
}

void expect_refused(const std::string &before) {
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 0);
  expect_on_both_volumes(before);
}

TEST(TroubledLoad, ScanThatIsKilledLeavesOutNoDisk) {
  Appliance machine = two_disks();
  const std::string before = read_file(first_share_file);
  for (const char *end : {"kill -KILL $$", "sh -c 'kill -TERM $$'"}) {
    machine.script("sg_scan", std::string("echo '/dev/sda: scsi0 channel=0 id=0 lun=0 [em]'\n") + end);
    expect_refused(before);
  }
}

// The exit status of a scan has never counted.
TEST(TroubledLoad, ScanThatFailsIsBelieved) {
  two_disks().script("sg_scan", "echo '/dev/sda: scsi0 channel=0 id=0 lun=0 [em]'\n"
                                "echo '/dev/sdb: scsi1 channel=0 id=0 lun=0 [em]'\nexit 1");
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 1);
}

TEST(TroubledLoad, ArrayWhoseDescriptionFailsKeepsItsShares) {
  Appliance machine = Appliance::mirror();
  machine.folder("/mnt/HD/HD_a2/new").folder("/mnt/HD/HD_a2/Music");
  ASSERT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
  const std::string before = read_file(first_share_file);
  for (const char *end : {"kill -KILL $$", "exit 1"}) {
    machine.script("mdadm", end);
    expect_refused(before);
  }
}

// A disk that is on its way out names no serial, and without it the volume's shares seem to be another's.
TEST(TroubledLoad, SharesOfADiskThatDoesNotAnswerStay) {
  Appliance machine = two_disks();
  const std::string before = read_file(first_share_file);
  machine.disk_fails("sdb");
  expect_refused(before);
}

TEST(TroubledLoad, SharesOfADiskThatIsBusyStay) {
  Appliance machine = two_disks();
  const std::string before = read_file(first_share_file);
  constexpr int busy = 8;
  machine.disk_status("sdb", busy, 0, 0);
  expect_refused(before);
  machine.disk_status("sdb", 0, 0, 0);
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 1);
}

TEST(TroubledLoad, SharesOfADiskThatAScanLeavesOutStay) {
  Appliance machine = two_disks();
  const std::string before = read_file(first_share_file);
  machine.script("sg_scan", "echo '/dev/sda: scsi0 channel=0 id=0 lun=0 [em]'");
  expect_refused(before);
}

// Records of the older numbering take the array's identity; nobody would have the one that is not known.
TEST(TroubledLoad, RecordsAreNotTaggedWithAnUnknownIdentity) {
  Appliance machine = Appliance::mirror();
  const std::string before =
      share_xml({Share{"Music"}.path("/mnt/HD/HD_a2/Music").tag(3, "WD-TESTDISK0001").everyone()});
  machine.folder("/mnt/HD/HD_a2/new").shares(before);
  machine.script("mdadm", "exit 1");
  expect_refused(before);
}

// Somebody mounts an image below a volume, which is then taken for the volume's device.
TEST(TroubledLoad, SharesOfAVolumeWithAMountBelowItStay) {
  Appliance machine = two_disks();
  const std::string before = read_file(first_share_file);
  machine.folder("/mnt/HD/HD_b2/Music/image")
      .mtab("/dev/sda2 /mnt/HD/HD_a2 ext4 rw 0 0\n"
            "/dev/sda4 /mnt/HD_a4 ext4 rw 0 0\n"
            "/dev/sdb2 /mnt/HD/HD_b2 ext4 rw 0 0\n"
            "/dev/sdb4 /mnt/HD_b4 ext4 rw 0 0\n"
            "/dev/loop0 /mnt/HD/HD_b2/Music/image iso9660 ro 0 0\n");
  expect_refused(before);
}

// A disk that never had a serial is known by that.
TEST(TroubledLoad, ADiskWithoutASerialKeepsItsShares) {
  Appliance machine = Appliance::single_disks();
  machine.disk("sda", "scsi0", "").folder("/mnt/HD/HD_a2/new").folder("/mnt/HD/HD_b2/Music");
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_b2/Music")), 1);
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 1);
  EXPECT_EQ(chk_share("Music"), 0);
  EXPECT_EQ(chk_share("New"), 0);
}

// Daemons ignore SIGCHLD, and what they start inherits that.
TEST(TroubledLoad, AProgramThatIgnoresItsChildrenChangesShares) {
  two_disks();
  std::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 1);
}

} // namespace
} // namespace nasshare::tests
