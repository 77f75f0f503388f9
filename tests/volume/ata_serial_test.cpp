// A disk's serial number, asked with ATA IDENTIFY DEVICE through SG_IO.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/volume.h"
#include "own_table.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

// The serial of sda, "before" where the destination is left alone.
std::string serial_of_sda() {
  std::array<char, 512> serial{"before"};
  get_serial_number(serial.data(), "sda");
  return serial.data();
}

void expect_trace_of_sda(const std::string &trace) {
  expect_trace([] { serial_of_sda(); }, trace);
}

int lowest_free_descriptor() {
  const int descriptor = dup(STDIN_FILENO);
  close(descriptor);
  return descriptor;
}

TEST(AtaSerial, SendsIdentifyDeviceAsPassThrough) {
  Appliance{}.disk("sda", "scsi0", "WD-A");
  serial_of_sda();
  EXPECT_EQ(kernel_requests(),
            "SG_IO sda command=85080e0000000100000000000000ec00 data=512 sense=32 timeout=15000\n");
}

TEST(AtaSerial, IsReadFromTheBytesAsTheyCome) {
  const struct {
    const char *bytes;
    const char *serial;
  } rows[] = {
      {"DWT-SEDTSI0K00 1    ", "WD-TESTDISK0001     "},
      {"BADCFEHGJILKNMPORQTS", "ABCDEFGHIJKLMNOPQRST"},
      {"    DW1-            ", "WD-1            "},
      {"   W-DA  1          ", "W D- A1           "},
      {"                    ", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.bytes);
    Appliance{}.raw_disk("sda", "scsi0", row.bytes);
    EXPECT_EQ(serial_of_sda(), row.serial);
  }
}

TEST(AtaSerial, EndsAtAZeroByte) {
  Appliance{}.raw_disk("sda", "scsi0", std::string("DW\0001", 4));
  EXPECT_EQ(serial_of_sda(), "WD1");
}

TEST(AtaSerial, IsEmptyWhenAllBytesAreZero) {
  Appliance{}.raw_disk("sda", "scsi0", std::string(20, '\0')).disk_status("sda", 2, 0, 8);
  EXPECT_EQ(serial_of_sda(), "");
}

TEST(AtaSerial, CheckConditionWithSenseIsAccepted) {
  Appliance{}.disk("sda", "scsi0", "WD-A               1").disk_status("sda", 2, 0, 8);
  EXPECT_EQ(serial_of_sda(), "WD-A               1");
  expect_silence([] { serial_of_sda(); });
}

TEST(AtaSerial, BadCompletionLeavesTheDestinationAndIsTraced) {
  const struct {
    int status;
    int host_status;
    int driver_status;
    const char *trace;
  } rows[] = {
      {8, 0, 0, "SG_IO: bad status: 0x8\n"},          {1, 0, 0, "SG_IO: bad status: 0x1\n"},
      {24, 3, 6, "SG_IO: bad status: 0x18\n"},        {0, 3, 6, "SG_IO: bad host status: 0x3\n"},
      {2, 14, 8, "SG_IO: bad host status: 0xe\n"},    {0, 0, 6, "SG_IO: bad driver status: 0x6\n"},
      {2, 0, 40, "SG_IO: bad driver status: 0x28\n"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.trace);
    Appliance{}
        .disk("sda", "scsi0", "WD-A")
        .disk_status("sda", row.status, row.host_status, row.driver_status);
    EXPECT_EQ(serial_of_sda(), "before");
    expect_trace_of_sda(row.trace);
  }
}

TEST(AtaSerial, RequestThatFailsGivesNoSerial) {
  Appliance{}.disk("sda", "scsi0", "WD-A").disk_fails("sda");
  EXPECT_EQ(serial_of_sda(), "cant_get_serial_number");
  expect_trace_of_sda("SG_IO: ioctl fail\n");
}

TEST(AtaSerial, DeviceThatCannotBeOpenedGivesNoSerial) {
  Appliance{}.disk("sda", "scsi0", "WD-A").no_device("sda");
  EXPECT_EQ(serial_of_sda(), "cant_get_serial_number");
  EXPECT_EQ(kernel_requests(), "");
  expect_trace_of_sda("Cannot open /dev/sda device!\n");
}

TEST(AtaSerial, DeviceIsOpenedWithoutWaiting) {
  ASSERT_EQ(mkfifo("/dev/sda", 0600), 0);
  EXPECT_EQ(serial_of_sda(), "cant_get_serial_number");
  expect_trace_of_sda("SG_IO: ioctl fail\n"); // a pipe opens for reading and writing, but takes no SG_IO
}

TEST(AtaSerial, DeviceIsClosedHoweverItEnds) {
  const int before = lowest_free_descriptor();
  Appliance{}.disk("sda", "scsi0", "WD-A");
  serial_of_sda();
  EXPECT_EQ(lowest_free_descriptor(), before);
  Appliance{}.disk_status("sda", 8, 0, 0);
  serial_of_sda();
  EXPECT_EQ(lowest_free_descriptor(), before);
  Appliance{}.disk_fails("sda");
  serial_of_sda();
  EXPECT_EQ(lowest_free_descriptor(), before);
}

TEST(AtaSerial, LongDeviceNameIsReportedWhole) {
  const std::string name(600, 'd');
  std::array<char, 512> serial{};
  expect_trace([&] { get_serial_number(serial.data(), name.c_str()); },
               "Cannot open /dev/" + name + " device!\n");
  EXPECT_STREQ(serial.data(), "cant_get_serial_number");
}

TEST(AtaSerial, MissingArgumentsAskNothing) {
  Appliance{}.disk("sda", "scsi0", "WD-A");
  std::array<char, 512> serial{"before"};
  get_serial_number(serial.data(), nullptr);
  get_serial_number(nullptr, "sda");
  EXPECT_STREQ(serial.data(), "before");
  EXPECT_EQ(kernel_requests(), "");
}

} // namespace
} // namespace nasshare::tests
