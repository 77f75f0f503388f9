// Discovery on what real machines with two bays were recorded to print.
#include "appliance.h"
#include "own_table.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace nasshare::tests {
namespace {

// Both disks, as their IDENTIFY data was recorded, and what the machine's tools and files say.
void describe(const std::string &mtab, const std::string &mdstat, const std::string &mdadm) {
  Appliance{}
      .raw_disk("sda", "scsi0", "DWT-SEDTSI0K00 1    ")
      .raw_disk("sdb", "scsi1", "DWT-SEDTSI0K00 2    ")
      .command("sg_scan", recording("kernel/sg_scan-two-bays.txt"))
      .command("mdadm", recording("kernel/" + mdadm))
      .mdstat(recording("kernel/" + mdstat))
      .mtab(recording("kernel/" + mtab));
}

struct Array {
  const char *name;
  const char *mtab;
  const char *mdstat;
  const char *mdadm;
  int kind;
  const char *uuid;
};

std::ostream &operator<<(std::ostream &stream, const Array &array) {
  return stream << array.mdadm;
}

class RecordedArray : public testing::TestWithParam<Array> {};

TEST(RecordedMachine, TwoSingleDisks) {
  describe("mtab-single.txt", "mdstat-raid0.txt", "mdadm-D-single.txt");
  const auto table = discovered();
  expect_two_single_disks(table);
  EXPECT_EQ(transcript().find("mdadm"), std::string::npos);
}

TEST(RecordedMachine, DiskThatIsNoAtaDiskHasNoSerial) {
  Appliance{}
      .disk("sda", "scsi0", "WD-TESTDISK0001")
      .disk("sdb", "scsi1", "WD-TESTDISK0002")
      .raw_disk("sdc", "scsi6", std::string(20, '\0'))
      .disk_status("sdc", 2, 0, 8)
      .command("sg_scan", recording("kernel/sg_scan-two-bays-and-usb.txt"))
      .mtab(recording("kernel/mtab-single.txt") + "/dev/sdc1 /mnt/USB/HD_c1 vfat rw,relatime 0 0\n");
  const auto table = discovered();
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_STREQ(table->other_dev_name, "sdc");
  EXPECT_EQ(table->usb_exist[0], 1);
  EXPECT_EQ(kernel_requests().find("sdc"), std::string::npos);
}

TEST_P(RecordedArray, IsOneVolumeOnTheFirstDisk) {
  const Array &array = GetParam();
  describe(array.mtab, array.mdstat, array.mdadm);
  const auto table = discovered();
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_EQ(table->vol_count, 1);
  EXPECT_EQ(table->vol_present[1], 0);
  EXPECT_STREQ(table->vol_mount_dev[0], "/dev/md1");
  EXPECT_EQ(table->vol_raid_type[0], array.kind);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_STREQ(table->vol_uuid[0], array.uuid);
  EXPECT_EQ(table->vol_comp_str[0], std::string("UUID=") + array.uuid);
  EXPECT_EQ(table->vol_hidden[0], 1);
  EXPECT_EQ(table->vol_hidden[1], 1);
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
  EXPECT_STREQ(table->disk_serial[0], "WD-TESTDISK0001");
  EXPECT_STREQ(table->disk_serial[1], "WD-TESTDISK0002");
}

// An array's mounts look alike whatever its level.
INSTANTIATE_TEST_SUITE_P(
    Kernel, RecordedArray,
    testing::Values(Array{"Linear", "mtab-raid1-0.90.txt", "mdstat-linear.txt", "mdadm-D-linear.txt", 2,
                          "060e3bb1:b4484d59:aecd3d11:561a7e11"},
                    Array{"Striping", "mtab-raid0.txt", "mdstat-raid0.txt", "mdadm-D-raid0.txt", 3,
                          "831b8fb7:936f1014:3e37de91:42300d50"},
                    Array{"Mirror090", "mtab-raid1-0.90.txt", "mdstat-raid1-0.90.txt",
                          "mdadm-D-raid1-0.90.txt", 4, "7cc3a0e9:85fa470b:aecd3d11:561a7e11"},
                    Array{"Mirror12", "mtab-raid1-0.90.txt", "mdstat-raid1-1.2.txt", "mdadm-D-raid1-1.2.txt",
                          4, "469814fc:3cbe35e0:816b5ad0:a04302e2"}),
    [](const auto &array) { return std::string(array.param.name); });

} // namespace
} // namespace nasshare::tests
