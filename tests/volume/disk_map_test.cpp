// Which disk sits in which bay, as "sg_scan" lists them, and the serial numbers of these disks.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/support.h"
#include "nasshare/volume.h"
#include "output.h"
#include "own_table.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

VolumeTable mapped() {
  auto table = empty_table();
  get_scsi_map(table.get());
  return table;
}

// Two disks whose devices and serials are there, listed by sg_scan in these words.
VolumeTable mapped_from(std::string_view listing) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .disk("sdb", "scsi1", "WD-B")
      .disk("sdc", "scsi6", "USB-C")
      .command("sg_scan", listing);
  return mapped();
}

constexpr const char *identify_sda =
    "SG_IO sda command=85080e0000000100000000000000ec00 data=512 sense=32 timeout=15000\n";

TEST(DiskMap, AsksForTheSixteenDevices) {
  Appliance{}.command("sg_scan");
  EXPECT_EQ(get_scsi_map(empty_table().get()), 0);
  EXPECT_EQ(
      transcript(),
      "sg_scan /dev/sda /dev/sdb /dev/sdc /dev/sdd /dev/sde /dev/sdf /dev/sdg /dev/sdh /dev/sdi /dev/sdj "
      "/dev/sdk /dev/sdl /dev/sdm /dev/sdn /dev/sdo /dev/sdp\n");
}

TEST(DiskMap, HostsScsi0AndScsi1AreTheBays) {
  const auto table = mapped_from(recording("kernel/sg_scan-two-bays.txt"));
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_EQ(table->hd_present[0], 1);
  EXPECT_EQ(table->hd_present[1], 1);
  EXPECT_STREQ(table->hd_device[0], "sda");
  EXPECT_STREQ(table->hd_device[1], "sdb");
  EXPECT_STREQ(table->disk_serial[0], "WD-A");
  EXPECT_STREQ(table->disk_serial[1], "WD-B");
}

TEST(DiskMap, DeviceNamesMayChangePlaces) {
  const auto table =
      mapped_from("/dev/sda: scsi1 channel=0 id=0 lun=0 [em]\n/dev/sdb: scsi0 channel=0 id=0 lun=0 [em]\n");
  EXPECT_STREQ(table->hd_device[0], "sdb");
  EXPECT_STREQ(table->hd_device[1], "sda");
  EXPECT_STREQ(table->disk_serial[0], "WD-B");
  EXPECT_STREQ(table->disk_serial[1], "WD-A");
}

TEST(DiskMap, DiskOfAnotherHostIsTheOtherDevice) {
  const auto table = mapped_from(recording("kernel/sg_scan-two-bays-and-usb.txt"));
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_STREQ(table->other_dev_name, "sdc");
  EXPECT_EQ(table->other_dev_present, 1);
}

TEST(DiskMap, DiskOfABayIsAlsoTheOtherDeviceOfTheOtherBay) {
  const auto table = mapped_from("/dev/sda: scsi0 channel=0 id=0 lun=0 [em]\n");
  EXPECT_STREQ(table->other_dev_name, "sda");
  EXPECT_EQ(table->other_dev_present, 1);
  EXPECT_STREQ(mapped_from(recording("kernel/sg_scan-two-bays.txt"))->other_dev_name, "sdb");
}

TEST(DiskMap, HostScsi10CountsForTheSecondBay) {
  const auto table = mapped_from("/dev/sdb: scsi10 channel=0 id=0 lun=0 [em]\n");
  EXPECT_EQ(table->hd_count, 1);
  EXPECT_EQ(table->hd_present[0], 0);
  EXPECT_EQ(table->hd_present[1], 1);
  EXPECT_STREQ(table->hd_device[1], "sdb");
  EXPECT_STREQ(table->disk_serial[1], "WD-B");
}

TEST(DiskMap, TwoLinesOfOneBayCountTwoDisks) {
  const auto table =
      mapped_from("/dev/sda: scsi0 channel=0 id=0 lun=0 [em]\n/dev/sdb: scsi0 channel=0 id=1 lun=0 [em]\n");
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_EQ(table->hd_present[1], 0);
  EXPECT_STREQ(table->hd_device[0], "sdb");
  EXPECT_STREQ(table->disk_serial[0], "WD-B");
}

TEST(DiskMap, LineWithoutAHostIsNoDisk) {
  const auto table = mapped_from("/dev/sda: no such device\n\n");
  EXPECT_EQ(table->hd_count, 0);
  EXPECT_EQ(table->other_dev_present, 0);
  EXPECT_STREQ(table->other_dev_name, "");
  EXPECT_EQ(kernel_requests(), "");
}

TEST(DiskMap, LineMayEndInBlanksAndControlCharacters) {
  const auto table = mapped_from("/dev/sda: scsi0 \t\r\n/dev/sdb: scsi1");
  EXPECT_STREQ(table->hd_device[0], "sda");
  EXPECT_STREQ(table->hd_device[1], "sdb");
}

TEST(DiskMap, CommandThatIsMissingGivesNoDisk) {
  Appliance{}.disk("sda", "scsi0", "WD-A").no_command("sg_scan");
  const auto table = mapped();
  EXPECT_EQ(table->hd_count, 0);
  EXPECT_EQ(table->hd_present[0], 0);
}

TEST(DiskMap, BlanksAroundTheSerialGo) {
  Appliance{}.disk("sda", "scsi0", "   WD A  1   ");
  EXPECT_STREQ(mapped()->disk_serial[0], "WD A  1");
}

TEST(DiskMap, DriverIsAskedWhenTheRequestCompletesBadly) {
  Appliance{}
      .disk("sda", "scsi0", "WD-A")
      .disk_status("sda", 0, 1, 0)
      .driver_serial(0, "        1-REVIRD    ");
  EXPECT_STREQ(mapped()->disk_serial[0], "DRIVER-1");
  EXPECT_EQ(kernel_requests(), std::string(identify_sda) + "SIOCDEVPRIVATE egiga0 2 0\n");
}

TEST(DiskMap, DriverIsAskedForThatBayWhenTheSerialIsBlank) {
  Appliance{}.disk("sdb", "scsi1", "").driver_serial(0, "WRONG").driver_serial(1, "            2-REVIRD");
  const auto table = mapped();
  EXPECT_STREQ(table->disk_serial[0], "");
  EXPECT_STREQ(table->disk_serial[1], "DRIVER-2");
}

TEST(DiskMap, SerialStaysEmptyWhereTheDriverHasNone) {
  Appliance{}.disk("sda", "scsi0", "");
  EXPECT_STREQ(mapped()->disk_serial[0], "");
}

TEST(DiskMap, DriverIsNotAskedWhenTheDeviceCannotBeOpened) {
  Appliance{}.disk("sda", "scsi0", "WD-A").no_device("sda").driver_serial(0, "            1-REVIRD");
  EXPECT_STREQ(mapped()->disk_serial[0], "cant_get_serial_number");
  EXPECT_EQ(kernel_requests(), "");
}

TEST(DiskMap, DriverIsNotAskedWhenTheRequestFails) {
  Appliance{}.disk("sda", "scsi0", "WD-A").disk_fails("sda").driver_serial(0, "            1-REVIRD");
  EXPECT_STREQ(mapped()->disk_serial[0], "cant_get_serial_number");
  EXPECT_EQ(kernel_requests(), identify_sda);
}

TEST(DiskMap, LongDeviceNameStaysInItsField) {
  const std::string name(480, 'd');
  const auto table = mapped_from("/dev/" + name + ": scsi0\n/dev/" + std::string(600, 'e') + ": scsi1\n");
  EXPECT_EQ(table->hd_device[0], name);
  EXPECT_STREQ(table->disk_serial[0], "cant_get_serial_number");
  EXPECT_STREQ(table->hd_device[1], "") << "the device's name lies in the piece before";
  EXPECT_EQ(table->hd_present[1], 1);
  EXPECT_EQ(table->vol_count, 0);
}

TEST(DiskMap, TraceNamesDevicesAndSerials) {
  Appliance::single_disks();
  expect_trace([] { mapped(); }, "##hd device name from sda ~ sdp\n"
                                 "\thd_device_name 0 = sda\n"
                                 "\thd_device_name 1 = sdb\n"
                                 "HD scsi0 = [WD-TESTDISK0001]\n"
                                 "HD scsi1= [WD-TESTDISK0002]\n");
}

TEST(DiskMap, TraceIsPrintedWithoutDisksToo) {
  Appliance{}.command("sg_scan");
  expect_trace([] { mapped(); }, "##hd device name from sda ~ sdp\n"
                                 "\thd_device_name 0 = \n"
                                 "\thd_device_name 1 = \n"
                                 "HD scsi0 = []\n"
                                 "HD scsi1= []\n");
}

TEST(DiskMap, NothingIsPrintedUnlessTheFlagIsExactlyOne) {
  Appliance::single_disks();
  for (const int flag : {0, 2, -1}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { mapped(); }), "");
  }
}

TEST(DiskMap, MissingTableRunsNothing) {
  Appliance{}.command("sg_scan");
  EXPECT_EQ(get_scsi_map(nullptr), -1);
  EXPECT_EQ(transcript(), "");
}

} // namespace
} // namespace nasshare::tests
