// What /etc/mtab says: data volumes, hidden system partitions, USB disks.
#include "appliance.h"
#include "fields.h"
#include "nasshare/support.h"
#include "nasshare/volume.h"
#include "output.h"
#include "own_table.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {
namespace {

Appliance one_disk() {
  return Appliance{}.disk("sda", "scsi0", "WD-A");
}

// One data volume, and these lines.
std::string volume_and(std::string_view lines) {
  std::string text = "/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n";
  text += lines;
  return text;
}

std::vector<int> slots(const std::int32_t (&marks)[32]) {
  std::vector<int> set;
  for (int slot = 0; slot < 32; ++slot) {
    if (marks[slot] == 1) {
      set.push_back(slot);
    }
  }
  return set;
}

TEST(Mtab, DataVolumesAreThePlacesHdA2AndHdB2) {
  one_disk().mtab("/dev/sda2 /mnt/HD/HD_a2 ext3 rw 0 0\n/dev/sdb2 /mnt/HD/HD_b2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 2);
  EXPECT_EQ(table->vol_present[0], 1);
  EXPECT_EQ(table->vol_present[1], 1);
  EXPECT_STREQ(table->vol_mount_dev[0], "/dev/sda2");
  EXPECT_STREQ(table->vol_mount_dev[1], "/dev/sdb2");
}

TEST(Mtab, SecondVolumeStandsAlone) {
  one_disk().mtab("/dev/sda2 /mnt/HD/HD_b2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 1);
  EXPECT_EQ(table->vol_present[0], 0);
  EXPECT_EQ(table->vol_present[1], 1);
  EXPECT_STREQ(table->vol_mount_dev[0], "");
  EXPECT_STREQ(table->vol_hidden_path[0], "");
  EXPECT_STREQ(table->vol_hidden_path[1], "/mnt/HD_a4");
}

TEST(Mtab, ThirdAndFourthVolumeAreNotUsed) {
  one_disk().mtab(volume_and("/dev/sdc2 /mnt/HD/HD_c2 ext3 rw 0 0\n/dev/sdd2 /mnt/HD/HD_d2 ext3 rw 0 0\n"
                             "/dev/sdc4 /mnt/HD_c4 ext3 rw 0 0\n"));
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 1);
  EXPECT_EQ(table->vol_hidden[0], 0);
  EXPECT_EQ(table->vol_hidden[1], 0);
}

TEST(Mtab, HiddenPartitionsAreThePlacesHdA4AndHdB4) {
  one_disk().mtab(volume_and("/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n"));
  const auto table = discovered();
  EXPECT_EQ(table->vol_hidden[0], 0);
  EXPECT_EQ(table->vol_hidden[1], 1);
}

TEST(Mtab, FirstHiddenPartitionIsVolumeOnes) {
  one_disk().mtab("/dev/sda4 /mnt/HD_a4 ext3 rw 0 0\n" + volume_and(""));
  const auto table = discovered();
  EXPECT_EQ(table->vol_hidden[0], 1);
  EXPECT_EQ(table->vol_hidden[1], 0);
}

TEST(Mtab, DeviceNamedLikeAVolumeIsNone) {
  one_disk().mtab(volume_and("/mnt/HD/HD_b2 /export none bind 0 0\n/mnt/HD_a4 /export none bind 0 0\n"
                             "/mnt/USB/HD_c1 /export none bind 0 0\n"));
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 1);
  EXPECT_EQ(table->vol_present[1], 0);
  EXPECT_EQ(table->vol_hidden[0], 0);
  EXPECT_EQ(slots(table->usb_exist), std::vector<int>{});
}

TEST(Mtab, VolumeMountedTwiceCountsTwiceWithTheLastDevice) {
  one_disk().mtab(volume_and("/dev/sdb2 /mnt/HD/HD_a2 ext3 rw 0 0\n"));
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 2);
  EXPECT_EQ(table->vol_present[0], 1);
  EXPECT_EQ(table->vol_present[1], 0);
  EXPECT_STREQ(table->vol_mount_dev[0], "/dev/sdb2");
}

TEST(Mtab, LineEndsAndTrailingBlanksDoNotMatter) {
  one_disk().mtab("/dev/sda2 /mnt/HD/HD_a2\r\n/dev/sda4 /mnt/HD_a4 \t\n/dev/sdc1 /mnt/USB/HD_c \r\n"
                  "/dev/sdd1 /mnt/USB/HD_d2");
  const auto table = discovered();
  EXPECT_EQ(table->vol_present[0], 1);
  EXPECT_EQ(table->vol_hidden[0], 1);
  EXPECT_EQ(slots(table->usb_exist), (std::vector<int>{1, 31}));
}

TEST(Mtab, LongDeviceIsCutToItsField) {
  const std::string device = "/dev/sda2" + std::string(591, 'x');
  one_disk().mtab(device + " /mnt/HD/HD_a2 ext3 rw 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->vol_mount_dev[0], device.substr(0, 511));
  EXPECT_STREQ(table->vol_mount_dev[1], "");
  EXPECT_STREQ(table->vol_share_name[1], "");
  EXPECT_STREQ(table->vol_comp_str[0], "WD-A");
}

TEST(Mtab, LongLineComesInPiecesOf4095Bytes) {
  const std::string filler(4095, 'x');
  one_disk().mtab(filler + volume_and(filler.substr(2) + " /mnt/HD/HD_b2 ext3 rw 0 0\n"));
  const auto table = discovered();
  EXPECT_EQ(table->vol_count, 1) << "the second pattern is cut in two";
  EXPECT_STREQ(table->vol_mount_dev[0], "/dev/sda2");
  EXPECT_EQ(table->vol_present[1], 0);
}

TEST(Mtab, UsbFolderTellsTheSlot) {
  const struct {
    const char *folder;
    std::vector<int> slots;
  } rows[] = {
      {"HD_c1", {0}},         {"HD_d5", {4}},          {"HD_c09", {8}},         {"HD_c31", {30}},
      {"HD_c", {31}},         {"HD_z", {31}},          {"HD_c2\\040old", {1}},  {"HD_", {}},
      {"HD_c0", {}},          {"HD_c32", {}},          {"HD_c-1", {}},          {"HD_cd", {}},
      {"HD_c4294967297", {}}, {"HD_c-4294967295", {}}, {"HD_c99999999999", {}},
  };
  one_disk();
  for (const auto &row : rows) {
    SCOPED_TRACE(row.folder);
    Appliance{}.mtab(volume_and(std::string("/dev/sdc1 /mnt/USB/") + row.folder + " vfat rw 0 0\n"));
    const auto table = discovered();
    EXPECT_EQ(slots(table->usb_exist), row.slots);
    EXPECT_EQ(slots(table->usb_mark), row.slots);
  }
}

TEST(Mtab, UsbFolderOutsideTheSlotsLeavesTheNeighboursAlone) {
  one_disk().mtab(volume_and("/dev/sdc1 /mnt/USB/HD_c0 vfat rw 0 0\n/dev/sdd1 /mnt/USB/HD_c65 vfat rw 0 0\n"
                             "/dev/sde1 /mnt/USB/HD_c-200 vfat rw 0 0\n"));
  const auto table = discovered();
  EXPECT_STREQ(table->other_dev_name, "sda");
  EXPECT_EQ(table->other_dev_present, 1);
  EXPECT_STREQ(table->usb_share_name[0], "");
  EXPECT_EQ(slots(table->usb_mark), std::vector<int>{});
}

TEST(Mtab, UsbSlotMountedTwiceIsReportedOnce) {
  one_disk().mtab(volume_and("/dev/sdc1 /mnt/USB/HD_c1 vfat rw 0 0\n/dev/sdd1 /mnt/USB/HD_d1 vfat rw 0 0\n"
                             "/dev/sde1 /mnt/USB/HD_e12 vfat rw 0 0\n"));
  smb_dbg_flag = 1;
  const std::string output = output_of([] { discovered(); });
  EXPECT_EQ(output.substr(0, output.find("volume_mount_point")), "USB no [1]\nUSB no [12]\n");
  EXPECT_NE(output.find("\n\nusb 0 exist [1]\nusb 11 exist [1]\n##hd"), std::string::npos) << output;
}

TEST(Mtab, LastUsbSlotHasNoNumberToReport) {
  one_disk().mtab(volume_and("/dev/sdc1 /mnt/USB/HD_c vfat rw 0 0\n"));
  smb_dbg_flag = 1;
  const std::string output = output_of([] { discovered(); });
  EXPECT_EQ(output.find("USB no"), std::string::npos) << output;
  EXPECT_NE(output.find("\nusb 31 exist [1]\n"), std::string::npos) << output;
}

TEST(CheckHidden, FindsTheFourthPartitionAnywhereInALine) {
  const struct {
    const char *mtab;
    int found;
  } rows[] = {
      {"/dev/sda4 /mnt/HD_a4 ext3 rw 0 0\n", 1},
      {"proc /proc proc rw 0 0\n/dev/sda4 /mnt/HD_a4 ext3 rw 0 0", 1},
      {"/dev/mapper/sda41 /mnt/HD_a4 ext3 rw 0 0\n", 1},
      {"/dev/sdb4 /mnt/HD_a4 ext3 rw 0 0\n", 0},
      {"/dev/sda /mnt/4 ext3 rw 0 0\n", 0},
      {"", 0},
  };
  const auto table = empty_table();
  put(table->hd_device[0], "sda");
  for (const auto &row : rows) {
    SCOPED_TRACE(row.mtab);
    Appliance{}.mtab(row.mtab);
    EXPECT_EQ(parse_check_hidden(table.get(), 0), row.found);
  }
}

TEST(CheckHidden, AsksForTheDiskOfThatBay) {
  Appliance{}.mtab("/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n");
  const auto table = empty_table();
  put(table->hd_device[0], "sda");
  put(table->hd_device[1], "sdb");
  EXPECT_EQ(parse_check_hidden(table.get(), 0), 0);
  EXPECT_EQ(parse_check_hidden(table.get(), 1), 1);
}

TEST(CheckHidden, AnswersNoWithoutMtab) {
  Appliance{}.remove("/etc/mtab");
  const auto table = empty_table();
  put(table->hd_device[0], "sda");
  EXPECT_EQ(parse_check_hidden(table.get(), 0), 0);
}

TEST(CheckHidden, TakesADeviceNameThatFillsItsField) {
  const std::string device(511, 'd');
  Appliance{}.mtab("/dev/" + device + "4 /mnt/HD_a4 ext3 rw 0 0\n");
  const auto table = empty_table();
  put(table->hd_device[1], device);
  EXPECT_EQ(parse_check_hidden(table.get(), 1), 1);
}

TEST(CheckHidden, AnswersNoForABayThatDoesNotExist) {
  Appliance{}.mtab("/dev/sda4 /mnt/HD_a4 ext3 rw 0 0\n");
  const auto table = empty_table();
  EXPECT_EQ(parse_check_hidden(table.get(), -1), 0);
  EXPECT_EQ(parse_check_hidden(table.get(), 2), 0);
  EXPECT_EQ(parse_check_hidden(nullptr, 0), 0);
}

} // namespace
} // namespace nasshare::tests
