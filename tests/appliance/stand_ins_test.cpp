// What the machine's kernel and disk tools answer, beside what real ones were recorded to answer.
#include "appliance.h"
#include "fields.h"
#include "output.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <net/if.h>
#include <scsi/sg.h>
#include <sstream>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr const char *sixteen = "/dev/sda /dev/sdb /dev/sdc /dev/sdd /dev/sde /dev/sdf /dev/sdg /dev/sdh "
                                "/dev/sdi /dev/sdj /dev/sdk /dev/sdl /dev/sdm /dev/sdn /dev/sdo /dev/sdp";

struct Identified {
  int result = 0;
  int error = 0;
  sg_io_hdr header = {};
  std::array<char, 512> data{};

  std::string serial_bytes() const { return {data.data() + 20, 20}; }
};

Identified identify(const char *device, unsigned char command = 0xec) {
  Identified identified;
  std::array<unsigned char, 16> block{0x85, 0x08, 0x0e, 0, 0, 0, 1};
  block[14] = command;
  sg_io_hdr &header = identified.header;
  header.interface_id = 'S';
  header.dxfer_direction = SG_DXFER_FROM_DEV;
  header.cmd_len = block.size();
  header.cmdp = block.data();
  header.dxfer_len = static_cast<unsigned>(identified.data.size());
  header.dxferp = identified.data.data();
  header.timeout = 15000;
  const int descriptor = open(device, O_RDWR | O_NONBLOCK);
  identified.result = ioctl(descriptor, SG_IO, &header);
  identified.error = errno;
  close(descriptor);
  return identified;
}

int request_of(const char *interface, unsigned long number, ifreq &request) {
  put(request.ifr_name, interface);
  const int handle = socket(AF_INET, SOCK_DGRAM, 0);
  const int result = ioctl(handle, number, &request);
  close(handle);
  return result;
}

int ask_driver(int command, int bay, std::array<char, 32> &buffer) {
  std::memcpy(buffer.data(), &command, sizeof command);
  std::memcpy(buffer.data() + sizeof command, &bay, sizeof bay);
  ifreq request{};
  request.ifr_data = buffer.data();
  return request_of("egiga0", SIOCDEVPRIVATE, request);
}

std::string line_of(FILE *file) {
  std::array<char, 64> line{};
  if (file != nullptr) {
    if (std::fgets(line.data(), line.size(), file) == nullptr) {
      line[0] = '\0';
    }
    std::fclose(file);
  }
  return line.data();
}

std::string uuid_in(const std::string &report) {
  const std::string label = "UUID : ";
  const std::size_t start = report.find(label) + label.size();
  return report.substr(start, report.find_first_of(" \n", start) - start);
}

TEST(SgScan, PrintsWhatWasRecorded) {
  const std::string command = std::string("sg_scan ") + sixteen;
  Appliance{}.disk("sda", "scsi0", "A").disk("sdb", "scsi1", "B");
  EXPECT_EQ(run_program({"sh", "-c", command}).out, recording("kernel/sg_scan-two-bays.txt"));
  Appliance{}.disk("sdc", "scsi6", "C");
  EXPECT_EQ(run_program({"sh", "-c", command}).out, recording("kernel/sg_scan-two-bays-and-usb.txt"));
}

TEST(SgScan, PrintsNothingForDevicesThatAreNotThere) {
  const Ended ended = run_program({"sg_scan", "/dev/sda"});
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.status, 0);
}

TEST(SgScan, KeepsTheOrderOfItsArguments) {
  Appliance{}.disk("sda", "scsi1", "A").disk("sdb", "scsi0", "B");
  EXPECT_EQ(run_program({"sg_scan", "/dev/sdb", "/dev/sda"}).out,
            "/dev/sdb: scsi0 channel=0 id=0 lun=0 [em]\n/dev/sda: scsi1 channel=0 id=0 lun=0 [em]\n");
}

TEST(Mdadm, ReportsArraysAsRecorded) {
  const std::array<std::array<std::string, 2>, 3> levels{
      {{"linear", "linear"}, {"raid0", "raid0"}, {"raid1", "raid1-0.90"}}};
  for (const auto &[level, name] : levels) {
    const std::string report = recording("kernel/mdadm-D-" + name + ".txt");
    Appliance{}.array("md1", level, uuid_in(report), {"sda2", "sdb2"});
    EXPECT_EQ(run_program({"mdadm", "-D", "/dev/md1"}).out, report);
    EXPECT_EQ(read_file("/run/appliance/mdstat"), recording("kernel/mdstat-" + name + ".txt"));
  }
}

TEST(Mdadm, KnowsNoOtherDevices) {
  const Ended ended = run_program({"mdadm", "-D", "/dev/sda2"});
  EXPECT_EQ(ended.err, recording("kernel/mdadm-D-single.txt"));
  EXPECT_EQ(ended.status, 1);
}

TEST(Mdstat, ListsStripedMirrorsByTheirArrays) {
  Appliance{}
      .array("md1", "raid1", "1", {"sda2", "sdb2"})
      .array("md2", "raid1", "2", {"sda3", "sdb3"})
      .array("md3", "raid0", "3", {"md1", "md2"});
  EXPECT_NE(read_file("/run/appliance/mdstat").find("\nmd3 : active raid0 md2[1] md1[0]\n"),
            std::string::npos);
}

TEST(Mdstat, IsWhatWasDescribed) {
  EXPECT_EQ(std::fopen("/proc/mdstat", "r"), nullptr);
  EXPECT_EQ(open("/proc/mdstat", O_RDONLY), -1);
  const std::string text = recording("kernel/mdstat-raid1-1.2.txt");
  Appliance{}.mdstat(text);
  std::stringstream read;
  read << std::ifstream("/proc/mdstat").rdbuf();
  EXPECT_EQ(read.str(), text);
  EXPECT_EQ(run_program({"cat", "/proc/mdstat"}).out, text);
}

TEST(Mdstat, IsWhatWasDescribedUnderEveryNameOfOpening) {
  Appliance{}.mdstat("described\n");
  for (const char *name : {"open", "open64", "__open_2", "__open64_2"}) {
    auto *open_file = reinterpret_cast<int (*)(const char *, int)>(dlsym(RTLD_DEFAULT, name));
    ASSERT_NE(open_file, nullptr) << name;
    EXPECT_EQ(line_of(fdopen(open_file("/proc/mdstat", O_RDONLY), "r")), "described\n") << name;
  }
  for (const char *name : {"fopen", "fopen64"}) {
    auto *open_file = reinterpret_cast<FILE *(*)(const char *, const char *)>(dlsym(RTLD_DEFAULT, name));
    ASSERT_NE(open_file, nullptr) << name;
    EXPECT_EQ(line_of(open_file("/proc/mdstat", "r")), "described\n") << name;
  }
}

TEST(Mounts, NameTheDeviceAskedFor) {
  Appliance{}.mount("/dev/sda2", "/mnt/HD/HD_a2").hidden("/dev/sda4", "/mnt/HD_a4");
  const std::string mounts = read_file("/etc/mtab");
  EXPECT_NE(mounts.find("\n/dev/sda2 /mnt/HD/HD_a2 tmpfs rw,relatime,mode=755"), std::string::npos) << mounts;
  EXPECT_TRUE(exists("/mnt/HD_a4/.systemfile"));
  Appliance{}.unmount("/mnt/HD/HD_a2");
  EXPECT_EQ(read_file("/proc/mounts").find("/dev/sda2"), std::string::npos);
  EXPECT_EQ(run_program({"appliance-mount", "/dev/md1", "/mnt/HD/HD_b2"}).status, 0);
  EXPECT_NE(read_file("/etc/mtab").find("\n/dev/md1 /mnt/HD/HD_b2 tmpfs "), std::string::npos);
}

TEST(Identify, AnswersAsADiskDid) {
  // /dev/sda of kernel/identify-serial-bytes.txt
  Appliance{}.disk("sda", "scsi0", "WD-TESTDISK0001");
  const Identified identified = identify("/dev/sda");
  EXPECT_EQ(identified.result, 0);
  EXPECT_EQ(identified.header.status, 0);
  EXPECT_EQ(identified.header.host_status, 0);
  EXPECT_EQ(identified.header.driver_status, 0);
  EXPECT_EQ(identified.serial_bytes(), "DWT-SEDTSI0K00 1    ");
  EXPECT_EQ(kernel_requests(),
            "SG_IO sda command=85080e0000000100000000000000ec00 data=512 sense=0 timeout=15000\n");
}

TEST(Identify, AnswersAsADiskThatIsNoAtaDiskDid) {
  Appliance{}.raw_disk("sdc", "scsi6", std::string(20, '\0')).disk_status("sdc", 2, 0, 8);
  const Identified identified = identify("/dev/sdc");
  EXPECT_EQ(identified.result, 0);
  EXPECT_EQ(identified.header.status, 2);
  EXPECT_EQ(identified.header.driver_status, 8);
  EXPECT_EQ(identified.serial_bytes(), std::string(20, '\0'));
}

TEST(Identify, FailsWhereDescribedAndForOtherCommands) {
  Appliance{}
      .disk("sda", "scsi0", "A")
      .disk("sdb", "scsi1", "B")
      .disk_fails("sdb")
      .disk("sdc", "scsi2", "C")
      .no_device("sdc");
  EXPECT_EQ(identify("/dev/sdb").result, -1);
  EXPECT_EQ(identify("/dev/sda", 0x25).error, EINVAL);
  EXPECT_EQ(open("/dev/sdc", O_RDWR), -1);
  Appliance{}.file("/dev/sdd", "");
  EXPECT_EQ(identify("/dev/sdd").error, ENOTTY);
}

TEST(Interface, GivesTheDescribedHardwareAddress) {
  ifreq request{};
  EXPECT_EQ(request_of("egiga0", SIOCGIFHWADDR, request), -1);
  Appliance{}.hardware_address("02:00:00:0a:1b:f2");
  ASSERT_EQ(request_of("egiga0", SIOCGIFHWADDR, request), 0);
  const std::array<unsigned char, 6> expected{2, 0, 0, 0x0a, 0x1b, 0xf2};
  EXPECT_EQ(std::memcmp(request.ifr_hwaddr.sa_data, expected.data(), expected.size()), 0);
  ifreq loopback{};
  ASSERT_EQ(request_of("lo", SIOCGIFHWADDR, loopback), 0);
  EXPECT_EQ(loopback.ifr_hwaddr.sa_data[5], 0);
}

TEST(Driver, GivesTheDescribedSerial) {
  std::array<char, 32> buffer{};
  EXPECT_EQ(ask_driver(2, 0, buffer), -1);
  Appliance{}.driver_serial(1, "1000KSIDTSET-DW     ");
  EXPECT_EQ(ask_driver(2, 0, buffer), -1);
  EXPECT_EQ(ask_driver(3, 1, buffer), -1);
  ASSERT_EQ(ask_driver(2, 1, buffer), 0);
  EXPECT_EQ(std::string(buffer.data(), 20), "1000KSIDTSET-DW     ");
}

} // namespace
} // namespace nasshare::tests
