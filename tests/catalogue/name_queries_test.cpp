// chk_share and chk_name_path: is a share name taken?
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

Appliance music_alone() {
  return Appliance::single_disks().shares("/mnt/HD_a4", share_xml({stored_share("Music").everyone()}));
}

// A list that the caller had loaded before.
void leave_a_list() {
  Insert_Smb_Node(Share{"Left"}.path("/mnt/HD/HD_a2/Left"));
}

TEST(ShareQuery, AnswersZeroForATakenName) {
  music_alone();
  EXPECT_EQ(chk_share("Music"), 0);
}

TEST(ShareQuery, AnswersOneForAFreeName) {
  music_alone();
  EXPECT_EQ(chk_share("Films"), 1);
}

TEST(ShareQuery, TellsLetterCaseApart) {
  music_alone();
  for (const char *name : {"music", "MUSIC", "Music ", " Music", "Musi"}) {
    EXPECT_EQ(chk_share(name), 1) << name;
  }
}

TEST(ShareQuery, AnswersOneWithoutAName) {
  music_alone();
  EXPECT_EQ(chk_share(nullptr), 1);
  EXPECT_EQ(chk_share(""), 1);
}

TEST(ShareQuery, FindsNamesThatAreEscapedInTheFile) {
  Appliance::single_disks().shares(share_xml({stored_share("R&D <lab>").everyone()}));
  EXPECT_EQ(chk_share("R&D <lab>"), 0);
  EXPECT_EQ(chk_share("R&amp;D <lab>"), 1);
}

TEST(ShareQuery, FindsALongName) {
  const std::string name(511, '&');
  Appliance::single_disks().shares(share_xml({stored_share(name).everyone()}));
  EXPECT_EQ(chk_share(name.c_str()), 0);
  EXPECT_EQ(chk_share(name.substr(1).c_str()), 1);
  EXPECT_EQ(chk_share(std::string(600, '&').c_str()), 1);
}

TEST(ShareQuery, FindsSharesOfTheSecondVolumeAndOfUsbDisks) {
  music_alone()
      .shares("/mnt/HD_b4", share_xml({stored_share("Docs", 1).everyone()}))
      .mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(chk_share("Docs"), 0);
  EXPECT_EQ(chk_share("USBDisk1_1"), 0);
  EXPECT_EQ(chk_share("USBDisk1_2"), 1);
}

TEST(ShareQuery, DoesNotFindASharePurgedForItsUnknownAccounts) {
  Appliance::single_disks().shares(share_xml({stored_share("Gone").read("#ghost#")}));
  EXPECT_EQ(chk_share("Gone"), 1);
}

TEST(ShareQuery, LooksAtTheDisksAndNotAtAnEarlierList) {
  music_alone();
  leave_a_list();
  EXPECT_EQ(chk_share("Left"), 1);
}

TEST(ShareQuery, LeavesTheListEmpty) {
  music_alone();
  for (const char *name : {"Music", "Films", ""}) {
    leave_a_list();
    chk_share(name);
    EXPECT_EQ(Is_Smb_Empty(), 1) << name;
  }
}

TEST(ShareQuery, PrintsWhatItsLoadPrints) {
  music_alone();
  const auto load = [](int /*flag*/) { return output_of(get_samba_info); };
  expect_output([] { chk_share("Music"); }, load);
  expect_output([] { chk_name_path("Music", "/mnt"); }, load);
}

TEST(ShareQuery, EndsTheProcessWithoutAVolume) {
  Appliance{};
  const Ended ended = run_to_exit([] { chk_share("Music"); });
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "");
}

TEST(NameAndPathQuery, AnswersByNameAndPath) {
  music_alone();
  const struct {
    const char *name;
    const char *path;
    int answer;
  } rows[] = {
      {"Music", "/mnt/HD/HD_a2/Music", 2},
      {"Music", "/mnt/HD/HD_a2/Music/", 0},
      {"Music", "/mnt/HD/HD_a2/music", 0},
      {"Music", "/mnt/HD/HD_b2/Music", 0},
      {"Music", "/mnt/HD/HD_a2/Musi", 0},
      {"Music", "", 0},
      {"Music", nullptr, 0},
      {"music", "/mnt/HD/HD_a2/Music", 1},
      {"Films", "/mnt/HD/HD_a2/Music", 1},
      {"", "/mnt/HD/HD_a2/Music", 1},
      {nullptr, "/mnt/HD/HD_a2/Music", 1},
      {nullptr, nullptr, 1},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.name != nullptr ? row.name : "null") + " " +
                 (row.path != nullptr ? row.path : "null"));
    leave_a_list();
    EXPECT_EQ(chk_name_path(row.name, row.path), row.answer);
    EXPECT_EQ(Is_Smb_Empty(), 1);
  }
}

TEST(NameAndPathQuery, KnowsThePathsOfUsbShares) {
  music_alone().mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(chk_name_path("USBDisk1_1", "/mnt/USB/HD_c1"), 2);
  EXPECT_EQ(chk_name_path("USBDisk1_1", "/mnt/USB/HD_c2"), 0);
}

TEST(NameAndPathQuery, ComparesPathsUnescapedAndWhole) {
  const std::string path = "/mnt/HD/HD_a2/" + std::string(4081, '&');
  Appliance::single_disks().shares(share_xml({stored_share("Deep").path(path).everyone()}));
  EXPECT_EQ(chk_name_path("Deep", path.c_str()), 2);
  EXPECT_EQ(chk_name_path("Deep", (path + "x").c_str()), 0);
  EXPECT_EQ(chk_name_path("Deep", path.substr(0, 4094).c_str()), 0);
}

} // namespace
} // namespace nasshare::tests
