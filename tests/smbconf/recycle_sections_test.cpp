// One recycle-bin section of smb.conf per volume that has a recycling share.
#include "appliance.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "share.h"
#include "smb_conf.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *volume_1 = "\n[ Recycle Bin - Volume_1 ]\n"
                                 "comment = Recycle Bin Directories\n"
                                 "path = /mnt/HD/HD_a2/recycle/%u\n"
                                 "guest ok = yes\n"
                                 "writable = yes\n"
                                 "valid users = \"nobody\",\"@allaccount\"\n";
constexpr const char *volume_2 = "\n[ Recycle Bin - Volume_2 ]\n"
                                 "comment = Recycle Bin Directories\n"
                                 "path = /mnt/HD/HD_b2/recycle/%u\n"
                                 "guest ok = yes\n"
                                 "writable = yes\n"
                                 "valid users = \"nobody\",\"@allaccount\"\n";

void share(const char *name, const char *path, int recycle) {
  Insert_Smb_Node(Share{name}.path(path).everyone().recycle(recycle));
}

std::string recycle_sections() {
  const std::string text = generated_sections();
  const std::size_t start = text.find("\n[ Recycle Bin");
  return start == std::string::npos ? "" : text.substr(start);
}

class RecycleSections : public testing::Test {
protected:
  RecycleSections() {
    Appliance{}.folder("/mnt/HD/HD_a2").folder("/mnt/HD/HD_b2");
    volumes_present(1, 1);
  }
};

TEST_F(RecycleSections, TwoSharesOfAVolumeHaveOne) {
  share("Music", "/mnt/HD/HD_a2/music", 1);
  share("Films", "/mnt/HD/HD_a2/films", 1);
  EXPECT_EQ(recycle_sections(), volume_1);
}

TEST_F(RecycleSections, StandInTheOrderOfTheVolumes) {
  share("Films", "/mnt/HD/HD_b2/films", 1);
  share("Music", "/mnt/HD/HD_a2/music", 1);
  EXPECT_EQ(recycle_sections(), std::string(volume_1) + volume_2);
}

TEST_F(RecycleSections, AVolumeThatIsNotPresentHasNone) {
  share("Music", "/mnt/HD/HD_a2/music", 1);
  share("Films", "/mnt/HD/HD_b2/films", 1);
  volumes_present(0, 1);
  EXPECT_EQ(recycle_sections(), volume_2);
  volumes_present(2, 0);
  EXPECT_EQ(recycle_sections(), "");
  EXPECT_FALSE(exists("/mnt/HD/HD_a2/recycle"));
}

TEST_F(RecycleSections, WithoutARecyclingShareThereIsNone) {
  share("Music", "/mnt/HD/HD_a2/music", 0);
  share("Films", "/mnt/HD/HD_b2/films", 2);
  EXPECT_EQ(recycle_sections(), "");
  EXPECT_EQ(pss->vol_recycle[0], 0);
  EXPECT_EQ(pss->vol_recycle[1], 0);
  EXPECT_FALSE(exists("/mnt/HD/HD_a2/recycle"));
}

TEST_F(RecycleSections, TheVolumesRootCountsToo) {
  share("Volume_2", "/mnt/HD/HD_b2", 1);
  EXPECT_EQ(recycle_sections(), volume_2);
  EXPECT_EQ(pss->vol_recycle[0], 0);
  EXPECT_EQ(pss->vol_recycle[1], 1);
}

TEST_F(RecycleSections, ASharesVolumeIsFoundAnywhereInItsPath) {
  share("Odd", "/mnt/USB/mnt/HD/HD_a2x", 1);
  share("Usb", "/mnt/USB/HD_c1/mnt/HD/HD_a2", 1);
  EXPECT_EQ(recycle_sections(), volume_1);
}

TEST_F(RecycleSections, AShareOnNeitherVolumeHasItsOptionsButNoSection) {
  share("Usb", "/mnt/USB/HD_c1/films", 1);
  share("Third", "/mnt/HD/HD_c2/films", 1);
  const std::string text = generated_sections();
  EXPECT_EQ(text.find("Recycle Bin"), std::string::npos);
  EXPECT_NE(text.find("vfs object = recycle\n"), std::string::npos);
  EXPECT_EQ(pss->vol_recycle[0], 0);
  EXPECT_EQ(pss->vol_recycle[1], 0);
}

TEST_F(RecycleSections, AVolumesMarkIsNeverTakenBack) {
  share("Music", "/mnt/HD/HD_a2/music", 1);
  EXPECT_EQ(recycle_sections(), volume_1);
  Free_All_List();
  share("Docs", "/mnt/HD/HD_b2/docs", 0);
  EXPECT_EQ(recycle_sections(), "") << "no share recycles";
  EXPECT_EQ(pss->vol_recycle[0], 1);
  share("Films", "/mnt/HD/HD_b2/films", 1);
  EXPECT_EQ(recycle_sections(), std::string(volume_1) + volume_2);
}

TEST_F(RecycleSections, MakeTheDirectoriesOfTheUsers) {
  share("Music", "/mnt/HD/HD_a2/music", 1);
  EXPECT_EQ(recycle_sections(), volume_1);
  EXPECT_EQ(names_in("/mnt/HD/HD_a2/recycle"), (Names{"alice", "bob", "carol", "nobody"}));
  EXPECT_EQ(mode("/mnt/HD/HD_a2/recycle"), 0777U);
  EXPECT_FALSE(exists("/mnt/HD/HD_b2/recycle"));
}

TEST_F(RecycleSections, LetTheDomainsUsersInInADomain) {
  Appliance{}.command("wbinfo", "dave 10000 10000\n");
  in_the_domain();
  share("Music", "/mnt/HD/HD_a2/music", 1);
  EXPECT_EQ(recycle_sections(), "\n[ Recycle Bin - Volume_1 ]\n"
                                "comment = Recycle Bin Directories\n"
                                "path = /mnt/HD/HD_a2/recycle/%u\n"
                                "guest ok = yes\n"
                                "writable = yes\n"
                                "valid users = \"nobody\",\"+CORP+Domain Users\"\n");
  EXPECT_EQ(names_in("/mnt/HD/HD_a2/recycle"), (Names{"CORP+dave", "nobody"}));
}

TEST_F(RecycleSections, CarryALongNameWhole) {
  const std::string name(511, 'V');
  put(pss->vol_share_name[0], name);
  share("Music", "/mnt/HD/HD_a2/music", 1);
  EXPECT_TRUE(recycle_sections().starts_with("\n[ Recycle Bin - " + name + " ]\ncomment"));
}

} // namespace
} // namespace nasshare::tests
