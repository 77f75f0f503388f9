// The UUID of an array, out of what "mdadm -D" reports.
#include "appliance.h"
#include "nasshare/volume.h"
#include "output.h"
#include "own_table.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/wait.h>

namespace nasshare::tests {
namespace {

// The UUID that is read when mdadm prints this; "before" where it leaves the destination alone.
std::string uuid_from(std::string_view report) {
  Appliance{}.command("mdadm", report);
  std::array<char, 64> uuid{"before"};
  get_raid_uuid(uuid.data(), "/dev/md1");
  return uuid.data();
}

TEST(ArrayUuid, AsksMdadmForTheDevice) {
  Appliance{}.command("mdadm", recording("kernel/mdadm-D-raid1-1.2.txt"));
  std::array<char, 64> uuid{};
  EXPECT_EQ(get_raid_uuid(uuid.data(), "/dev/mapper/md127"), 0);
  EXPECT_EQ(transcript(), "mdadm -D /dev/mapper/md127\n");
}

TEST(ArrayUuid, IsReadFromRecordedReports) {
  const struct {
    const char *report;
    const char *uuid;
  } rows[] = {
      {"kernel/mdadm-D-linear.txt", "060e3bb1:b4484d59:aecd3d11:561a7e11"},
      {"kernel/mdadm-D-raid0.txt", "831b8fb7:936f1014:3e37de91:42300d50"},
      {"kernel/mdadm-D-raid1-0.90.txt", "7cc3a0e9:85fa470b:aecd3d11:561a7e11"},
      {"kernel/mdadm-D-raid1-1.2.txt", "469814fc:3cbe35e0:816b5ad0:a04302e2"},
      {"kernel/mdadm-D-single.txt", "before"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.report);
    EXPECT_EQ(uuid_from(recording(row.report)), row.uuid);
  }
}

TEST(ArrayUuid, IsTheWordBehindTheLabel) {
  const struct {
    const char *report;
    const char *uuid;
  } rows[] = {
      {"UUID : 1:2\n", "1:2"},
      {"\t  UUID : 1:2 (local to host nas)\r\n", "1:2"},
      {"UUID :1:2", "1:2"},
      {"UUID : 1:2\nEvents : 7\nUUID : 3:4\n", "3:4"},
      {"UUID : 1:2\nUUID : \n", "1:2"},
      {"UUID: 1:2\n", "before"},
      {"uuid : 1:2\n", "before"},
      {"Array UUID : 1:2\n", "before"},
      {"", "before"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.report);
    EXPECT_EQ(uuid_from(row.report), row.uuid);
  }
}

TEST(ArrayUuid, LongUuidIsCutToItsField) {
  EXPECT_EQ(uuid_from("UUID : " + std::string(600, 'u') + "\n"), std::string(63, 'u'));
  EXPECT_EQ(uuid_from("UUID : " + std::string(64, 'v') + "\n"), std::string(63, 'v'));
}

TEST(ArrayUuid, LongLineComesInPiecesOf511Bytes) {
  EXPECT_EQ(uuid_from(std::string(511, 'x') + "UUID : 1:2\n"), "1:2");
  EXPECT_EQ(uuid_from(std::string(509, 'x') + "UUID : 1:2\n"), "before");
}

TEST(ArrayUuid, ResultIsTheCommandsStatus) {
  Appliance{}.command("mdadm", "UUID : 1:2\n", 4);
  std::array<char, 64> uuid{};
  const int status = get_raid_uuid(uuid.data(), "/dev/md1");
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 4);
  EXPECT_STREQ(uuid.data(), "1:2");
}

TEST(ArrayUuid, MissingCommandLeavesTheDestination) {
  Appliance{}.no_command("mdadm");
  std::array<char, 64> uuid{"before"};
  EXPECT_EQ(output_of([&uuid] { get_raid_uuid(uuid.data(), "/dev/md1"); }), "")
      << "the shell complains elsewhere";
  EXPECT_STREQ(uuid.data(), "before");
}

TEST(ArrayUuid, MissingArgumentsRunNothing) {
  Appliance{}.command("mdadm", "UUID : 1:2\n");
  std::array<char, 64> uuid{"before"};
  get_raid_uuid(nullptr, "/dev/md1");
  get_raid_uuid(uuid.data(), nullptr);
  EXPECT_EQ(transcript(), "");
  EXPECT_STREQ(uuid.data(), "before");
}

TEST(ArrayUuid, OfADeviceThatTheShellWouldReadIsNotAsked) {
  Appliance{}.command("mdadm", "UUID : 1:2:3:4\n");
  for (const char *device : {"/dev/md1;true", "/dev/md1 x", "/dev/$(id)", "/dev/md1\\040", "/dev/md'1"}) {
    SCOPED_TRACE(device);
    std::array<char, 64> uuid{"before"};
    EXPECT_EQ(get_raid_uuid(uuid.data(), device), -1);
    EXPECT_STREQ(uuid.data(), "before");
  }
  EXPECT_EQ(transcript(), "");
}

} // namespace
} // namespace nasshare::tests
