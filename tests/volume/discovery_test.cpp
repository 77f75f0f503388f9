// Discovery as a whole: which volumes there are, of which kind, on which disk, and what is printed meanwhile.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/support.h"
#include "nasshare/volume.h"
#include "output.h"
#include "own_table.h"
#include "volume_table.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

// A mirror and a USB disk.
void describe_mirror_and_usb() {
  Appliance::mirror().mount("/dev/sdc1", "/mnt/USB/HD_c1");
}

Ended discovery_that_ends() {
  return run_to_exit([] { discovered(); });
}

// What it prints until it ends the process, as an operation that comes back.
void print_discovery_that_ends() {
  std::printf("%s", discovery_that_ends().out.c_str());
}

constexpr const char *no_volume_table = "\n"
                                        "Volume_1 [0]\n"
                                        "Volume_2 [0]\n"
                                        "\n"
                                        "hidden_1 [0]\n"
                                        "hidden_2 [0]\n"
                                        "\n";

constexpr const char *mirror_and_usb_table = "volume_mount_point [/dev/md1]\n"
                                             "\n"
                                             "Volume_1 [1]\n"
                                             "Volume_2 [0]\n"
                                             "\n"
                                             "hidden_1 [1]\n"
                                             "hidden_2 [1]\n"
                                             "\n"
                                             "usb 0 exist [1]\n";

constexpr const char *mirror_details = "volume number = 1\n"
                                       "hd number     = 2\n"
                                       "\n"
                                       "\n"
                                       "Volume_1 raid type [4]\n"
                                       "Volume_1 raid uuid [7cc3a0e9:85fa470b:aecd3d11:561a7e11]\n"
                                       "Volume_1 comp str  [UUID=7cc3a0e9:85fa470b:aecd3d11:561a7e11]\n"
                                       "Volume_1 which hd  [0][sda]\n"
                                       "Volume_1 hidden in [/mnt/HD_a4]\n"
                                       "\n";

TEST(Discovery, SingleDiskIsKnownByItsSerial) {
  Appliance{}.disk("sda", "scsi0", "WD-TESTDISK0001").mtab("/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 1);
  EXPECT_EQ(table->vol_present[0], 1);
  EXPECT_EQ(table->vol_raid_type[0], 1);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_comp_str[0], "WD-TESTDISK0001");
  EXPECT_STREQ(table->vol_uuid[0], "");
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
}

TEST(Discovery, EachSingleDiskCarriesItsOwnVolume) {
  Appliance::single_disks();
  const auto table = discovered();
  expect_two_single_disks(table);
  EXPECT_EQ(table->vol_hidden[0], 1);
  EXPECT_EQ(table->vol_hidden[1], 1);
}

TEST(Discovery, DiskIsToldByItsDeviceNotByItsBay) {
  Appliance{}
      .disk("sda", "scsi1", "WD-IN-BAY-1")
      .disk("sdb", "scsi0", "WD-IN-BAY-0")
      .mtab("/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n/dev/sdb2 /mnt/HD/HD_b2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_hd[0], 1);
  EXPECT_EQ(table->vol_hd[1], 0);
  EXPECT_STREQ(table->vol_comp_str[0], "WD-IN-BAY-1");
  EXPECT_STREQ(table->vol_comp_str[1], "WD-IN-BAY-0");
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
  EXPECT_STREQ(table->vol_hidden_path[1], "/mnt/HD_b4");
}

TEST(Discovery, DeviceOnNoDiskHasNoSerial) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .disk("sdb", "scsi1", "WD-B")
      .mtab("/dev/sdx2 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 1);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_comp_str[0], "");
}

TEST(Discovery, VolumeOnAnEmptyBayHasNoHiddenPath) {
  Appliance{}
      .disk("sdb", "scsi1", "WD-B")
      .mtab("/dev/sdx2 /mnt/HD/HD_a2 ext3 rw 0 0\n/dev/sdb2 /mnt/HD/HD_b2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_hidden_path[0], "");
  EXPECT_STREQ(table->vol_hidden_path[1], "/mnt/HD_b4");
}

TEST(Discovery, MirrorIsKnownByItsUuid) {
  Appliance::mirror();
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 4);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_mount_dev[0], "/dev/md1");
  EXPECT_STREQ(table->vol_uuid[0], "7cc3a0e9:85fa470b:aecd3d11:561a7e11");
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=7cc3a0e9:85fa470b:aecd3d11:561a7e11");
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
}

TEST(Discovery, DegradedMirrorLivesOnTheDiskThatIsLeft) {
  Appliance{}
      .disk("sdb", "scsi1", "WD-B")
      .hidden("/dev/sdb4", "/mnt/HD_b4")
      .array("md1", "raid1", "1:2:3:4", {"sdb2"})
      .mount("/dev/md1", "/mnt/HD/HD_a2");
  const auto table = discovered();
  EXPECT_EQ(table->vol_hd[0], 1);
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_b4");
}

TEST(Discovery, StripedMirrorsAreTheSixthKind) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .mdstat("md3 : active raid0 md2[1] md1[0]\n")
      .command("mdadm", "           UUID : 1:2:3:4\n")
      .mount("/dev/md3", "/mnt/HD/HD_a2");
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 6);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=1:2:3:4");
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
}

TEST(Discovery, ArrayIsLookedUpByTheFirstNameThatItsDeviceContains) {
  const struct {
    const char *device;
    int kind;
  } rows[] = {
      {"/dev/md1", 2},   {"/dev/md2", 4},        {"/dev/md3", 3},         {"/dev/md4", 5},
      {"/dev/md127", 2}, {"/dev/mapper/md2", 4}, {"/dev/mapper/md31", 3}, {"/dev/md5", 0},
      {"/dev/md", 0},    {"/dev/md/data", 0},    {"/dev/md0", 0},
  };
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .mdstat("md1 : active linear sda2[0]\nmd2 : active raid1 sda2[0]\nmd3 : active raid0 sda2[0]\n"
              "md4 : active raid5 sda2[0]\n")
      .command("mdadm", "UUID : 1:2:3:4\n");
  for (const auto &row : rows) {
    SCOPED_TRACE(row.device);
    Appliance{}.mtab(std::string(row.device) + " /mnt/HD/HD_a2 ext3 rw 0 0\n");
    const auto table = discovered();
    EXPECT_EQ(table->vol_raid_type[0], row.kind);
    EXPECT_STREQ(table->vol_comp_str[0], "UUID=1:2:3:4");
  }
}

TEST(Discovery, Md127IsLookedUpAsMd1) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .array("md127", "raid1", "1:2:3:4", {"sda2", "sdb2"})
      .mount("/dev/md127", "/mnt/HD/HD_a2");
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 4);
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=1:2:3:4");
}

TEST(Discovery, TwoArraysCarryTwoVolumes) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .disk("sdb", "scsi1", "WD-B")
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .hidden("/dev/sdb4", "/mnt/HD_b4")
      .array("md1", "raid1", "1:1:1:1", {"sda2", "sdb2"})
      .array("md2", "linear", "2:2:2:2", {"sdb3"})
      .mount("/dev/md1", "/mnt/HD/HD_a2")
      .mount("/dev/md2", "/mnt/HD/HD_b2");
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 4);
  EXPECT_EQ(table->vol_raid_type[1], 2);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_EQ(table->vol_hd[1], 1);
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=1:1:1:1");
  EXPECT_STREQ(table->vol_comp_str[1], "UUID=2:2:2:2");
}

TEST(Discovery, ArrayWithoutMdstatHasNoKindAndTheFirstBay) {
  Appliance{}
      .disk("sdb", "scsi1", "WD-B")
      .command("mdadm", "UUID : 1:2:3:4\n")
      .mtab("/dev/md1 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_raid_type[0], 0);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=1:2:3:4");
}

TEST(Discovery, ArrayWithoutUuidIsKnownByTheLabelAlone) {
  Appliance{}.disk("sda", "scsi0", "WD-A").no_command("mdadm").mtab("/dev/md1 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_STREQ(table->vol_uuid[0], "");
  EXPECT_STREQ(table->vol_comp_str[0], "UUID=");
}

TEST(Discovery, LongUuidStaysInItsField) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .command("mdadm", "UUID : " + std::string(600, 'u') + "\n")
      .mtab("/dev/sda2 /mnt/HD/HD_b2 ext3 rw 0 0\n/dev/md1 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_uuid[0], std::string(63, 'u'));
  EXPECT_EQ(table->vol_comp_str[0], "UUID=" + std::string(58, 'u'));
  EXPECT_STREQ(table->vol_comp_str[1], "WD-A");
  EXPECT_STREQ(table->vol_uuid[1], "");
}

TEST(Discovery, EarlierFindingsAreForgotten) {
  Appliance{}.disk("sda", "scsi0", "WD-A").mtab("/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = empty_table();
  std::memset(static_cast<void *>(table.get()), 'x', sizeof *table);
  get_hd_raid_info(table.get());
  auto fresh = discovered();
  EXPECT_EQ(std::memcmp(table.get(), fresh.get(), offsetof(smb_catalogue, workgroup)), 0);
  EXPECT_EQ(table->hd_count, 1);
  EXPECT_EQ(table->vol_recycle[1], 0);
  EXPECT_EQ(table->usb_mark[31], 0);
  EXPECT_STREQ(table->usb_mount_name[31], "");
}

TEST(Discovery, SettingsAndShareListStay) {
  Appliance{}.disk("sda", "scsi0", "WD-A").mtab("/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = empty_table();
  std::memset(static_cast<void *>(table.get()), 'x', sizeof *table);
  get_hd_raid_info(table.get());
  const std::string_view bytes(reinterpret_cast<const char *>(table.get()), sizeof *table);
  EXPECT_EQ(bytes.substr(offsetof(smb_catalogue, workgroup)).find_first_not_of('x'), std::string_view::npos);
}

TEST(Discovery, WithoutAVolumeTheProcessEnds) {
  Appliance{}.disk("sda", "scsi0", "WD-A").hidden("/dev/sda4", "/mnt/HD_a4");
  const Ended ended = discovery_that_ends();
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "");
}

TEST(Discovery, WithoutADiskTheProcessEnds) {
  Appliance{}.mount("/dev/sda2", "/mnt/HD/HD_a2");
  const Ended ended = discovery_that_ends();
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "");
}

TEST(Discovery, WithoutSgScanTheProcessEnds) {
  Appliance{}.disk("sda", "scsi0", "WD-A").mount("/dev/sda2", "/mnt/HD/HD_a2").no_command("sg_scan");
  EXPECT_EQ(discovery_that_ends().status, 255);
}

TEST(Discovery, DiskInNeitherBayIsNoDisk) {
  Appliance{}.disk("sda", "scsi2", "WD-A").mount("/dev/sda2", "/mnt/HD/HD_a2");
  EXPECT_EQ(discovery_that_ends().status, 255);
}

TEST(Discovery, EndWithoutAVolumeIsListed) {
  Appliance{}.disk("sda", "scsi0", "WD-A").mtab("proc /proc proc rw 0 0\n");
  const std::string numbers = "volume number = 0\nhd number     = 1\n\n### NO HD or NO Volume !! ###\n";
  const std::string map = "##hd device name from sda ~ sdp\n"
                          "\thd_device_name 0 = sda\n"
                          "\thd_device_name 1 = \n"
                          "HD scsi0 = [WD-A]\n"
                          "HD scsi1= []\n";
  expect_listing_and_trace(print_discovery_that_ends, no_volume_table + numbers,
                           no_volume_table + map + numbers);
}

TEST(Discovery, WithoutMtabThereIsNoListOfMounts) {
  Appliance{}.disk("sda", "scsi0", "WD-A").remove("/etc/mtab");
  smb_dbg_flag = 2;
  const Ended ended = discovery_that_ends();
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "volume number = 0\nhd number     = 1\n\n### NO HD or NO Volume !! ###\n");
}

TEST(Discovery, WithoutMtabTheProcessEndsSilently) {
  Appliance{}.disk("sda", "scsi0", "WD-A").remove("/etc/mtab");
  const Ended ended = discovery_that_ends();
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "");
}

TEST(Discovery, FlagOnePrintsListingsAndTraces) {
  describe_mirror_and_usb();
  smb_dbg_flag = 1;
  EXPECT_EQ(output_of([] { discovered(); }),
            std::string("USB no [1]\n") + mirror_and_usb_table + disk_map_trace + mirror_details);
}

TEST(Discovery, FlagTwoPrintsListingsOnly) {
  describe_mirror_and_usb();
  smb_dbg_flag = 2;
  EXPECT_EQ(output_of([] { discovered(); }), std::string(mirror_and_usb_table) + mirror_details);
}

TEST(Discovery, FlagZeroPrintsNothing) {
  describe_mirror_and_usb();
  EXPECT_EQ(output_of([] { discovered(); }), "");
}

TEST(Discovery, ListingNumbersTheVolumes) {
  Appliance::single_disks().unmount("/mnt/HD/HD_a2");
  const std::string table = "volume_mount_point [/dev/sdb2]\n"
                            "\n"
                            "Volume_1 [0]\n"
                            "Volume_2 [1]\n"
                            "\n"
                            "hidden_1 [1]\n"
                            "hidden_2 [1]\n"
                            "\n";
  const std::string details = "volume number = 1\n"
                              "hd number     = 2\n"
                              "\n"
                              "\n"
                              "Volume_2 raid type [1]\n"
                              "Volume_2 raid uuid []\n"
                              "Volume_2 comp str  [WD-TESTDISK0002]\n"
                              "Volume_2 which hd  [1][sdb]\n"
                              "Volume_2 hidden in [/mnt/HD_b4]\n"
                              "\n";
  expect_listing_and_trace([] { discovered(); }, table + details, table + disk_map_trace + details);
}

TEST(Discovery, MissingTableIsLeftAlone) {
  const Ended ended = run_to_exit([] { get_hd_raid_info(nullptr); });
  EXPECT_TRUE(ended.returned);
  EXPECT_EQ(ended.out, "");
}

} // namespace
} // namespace nasshare::tests
