// The share names of volumes and USB slots, as /etc/shared_name gives them.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/volume.h"
#include "own_table.h"
#include "text.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

VolumeTable named() {
  auto table = empty_table();
  get_HD_share_name(table.get());
  return table;
}

VolumeTable named_by(std::string_view text) {
  Appliance{}.shared_name(text);
  return named();
}

std::string usb_name(int slot, std::string_view name, std::string_view folder) {
  return std::to_string(slot).append(" ").append(name).append(" = ").append(folder);
}

// The slots that have a name or a folder, such as "0 USBDisk1_1 = HD_c1".
Names usb_names(const VolumeTable &table) {
  Names names;
  for (int slot = 0; slot < 32; ++slot) {
    const std::string name = table->usb_share_name[slot];
    const std::string folder = table->usb_mount_name[slot];
    if (!name.empty() || !folder.empty()) {
      names.push_back(usb_name(slot, name, folder));
    }
  }
  return names;
}

TEST(ShareNames, WithoutAFileTheyAreTheDefaults) {
  const auto table = named();
  EXPECT_STREQ(table->vol_share_name[0], "Volume_1");
  EXPECT_STREQ(table->vol_share_name[1], "Volume_2");
  Names expected;
  for (int slot = 0; slot < 31; ++slot) {
    const std::string number = std::to_string(slot + 1);
    expected.push_back(usb_name(slot, "USBDisk1_" + number, "HD_c" + number));
  }
  expected.emplace_back("31 USBDisk1_c = HD_c");
  EXPECT_EQ(usb_names(table), expected);
}

TEST(ShareNames, VolumesAreNamedByTheirFolder) {
  const auto table = named_by("Films = HD_b2\nMusic = HD_a2\n");
  EXPECT_STREQ(table->vol_share_name[0], "Music");
  EXPECT_STREQ(table->vol_share_name[1], "Films");
  EXPECT_EQ(usb_names(table), Names{}) << "the defaults of the USB slots are for a missing file only";
}

TEST(ShareNames, OneNamedVolumeLeavesTheOtherEmpty) {
  const auto table = named_by("Media = HD_b2\n");
  EXPECT_STREQ(table->vol_share_name[0], "");
  EXPECT_STREQ(table->vol_share_name[1], "Media");
}

TEST(ShareNames, NoNamedVolumeGivesBothDefaults) {
  for (const char *text : {"", "\n", "Data = HD_c2\n", "USBDisk1_1 = HD_c1\n"}) {
    SCOPED_TRACE(text);
    const auto table = named_by(text);
    EXPECT_STREQ(table->vol_share_name[0], "Volume_1");
    EXPECT_STREQ(table->vol_share_name[1], "Volume_2");
  }
}

TEST(ShareNames, VolumeLineGivesItsFirstWord) {
  const struct {
    const char *line;
    const char *first;
    const char *second;
  } rows[] = {
      {"Music = HD_a2", "Music", ""},
      {"  Music = HD_a2 \r", "Music", ""},
      {"Caf\xC3\xA9&Co = HD_a2", "Caf\xC3\xA9&Co", ""},
      {"My Music = HD_a2", "My", ""},
      {"Music = /mnt/HD/HD_a2", "Music", ""},
      {"Both = HD_a2 HD_b2", "Both", ""},
      {"HD_a2 = HD_b2", "HD_a2", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.line);
    const auto table = named_by(std::string(row.line) + "\n");
    EXPECT_STREQ(table->vol_share_name[0], row.first);
    EXPECT_STREQ(table->vol_share_name[1], row.second);
  }
}

TEST(ShareNames, LastLineOfAVolumeWins) {
  EXPECT_STREQ(named_by("Old = HD_a2\nNew = HD_a2\n")->vol_share_name[0], "New");
}

TEST(ShareNames, UsbLineGoesToTheSlotOfItsFolder) {
  const struct {
    const char *line;
    Names names;
  } rows[] = {
      {"USBDisk1_1 = HD_c1", {"0 USBDisk1_1 = HD_c1"}},
      {"USBDisk1_3 = HD_c3", {"2 USBDisk1_3 = HD_c3"}},
      {"USBDisk1_31 = HD_c31", {"30 USBDisk1_31 = HD_c31"}},
      {"USBDisk2_7 = HD_d7", {"6 USBDisk2_7 = HD_d7"}},
      {"My-USB = HD_c5", {"4 My-USB = HD_c5"}},
      {"USB_8chr = HD_c5", {"4 USB_8chr = HD_c5"}},
      {"USBDisk1 = HD_c", {"31 USBDisk1 = HD_c"}},
      {"My_USB_8 = HD_d", {"31 My_USB_8 = HD_d"}},
      {"USBDisk1_c = HD_c", {"31 USBDisk1_c = HD_c"}},
      {"USBDisk1_c = HD_d", {}},
      {"USBDisk = HD_c", {}},
      {"USBDisk12 = HD_c", {}},
      {"USBDisk1 = HD_", {}},
      {"USBDisk1_0 = HD_c0", {}},
      {"USBDisk1_32 = HD_c32", {}},
      {"USBDisk1_x = HD_cx", {}},
      {"USBDisk1_1 = HD_c-1", {}},
      {"USBDisk1_1 = HD_c99999999999", {}},
      {"USBDisk1_1 = HD_c4294967297", {}},
      {"USBDisk1_1 = HD_c-4294967295", {}},
      {"USBDisk1_1", {}},
      {"USBDisk1_1 =", {}},
      {"USBDisk1_1 : HD_c1", {}},
      {"  USBDisk1_1   =  HD_c1 \r", {"0 USBDisk1_1 = HD_c1"}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(usb_names(named_by(std::string(row.line) + "\n")), row.names);
  }
}

TEST(ShareNames, VolumeLineThatSaysUsbIsAUsbLine) {
  const auto table = named_by("USBBackup = HD_a2\nMedia = HD_b2\n");
  EXPECT_STREQ(table->vol_share_name[0], "");
  EXPECT_STREQ(table->vol_share_name[1], "Media");
  EXPECT_EQ(usb_names(table), Names{"1 USBBackup = HD_a2"});
}

TEST(ShareNames, UsbFolderAloneMakesAUsbLine) {
  EXPECT_EQ(usb_names(named_by("Stick = HD_c1 # USB\n")), Names{"0 Stick = HD_c1"});
  EXPECT_EQ(usb_names(named_by("Stick = HD_c1\n")), Names{}) << "without \"USB\" the line is ignored";
}

TEST(ShareNames, LongVolumeNameIsCutToItsField) {
  const auto table = named_by(std::string(600, 'm') + " = HD_a2\n");
  EXPECT_EQ(table->vol_share_name[0], std::string(511, 'm'));
  EXPECT_STREQ(table->vol_share_name[1], "");
}

TEST(ShareNames, LongUsbNameAndFolderAreCutTo63Bytes) {
  const std::string name = "USB" + std::string(600, 'n');
  const std::string folder = "HD_c7" + std::string(600, 'f');
  const auto table = named_by(name + " = " + folder + "\n");
  EXPECT_EQ(usb_names(table), Names{"6 " + name.substr(0, 63) + " = " + folder.substr(0, 63)});
}

TEST(ShareNames, LongLineComesInPiecesOf4095Bytes) {
  const auto table = named_by(std::string(4095, 'x') + "Music = HD_a2\nFilms = HD_b2\n");
  EXPECT_STREQ(table->vol_share_name[0], "Music");
  EXPECT_STREQ(table->vol_share_name[1], "Films");
}

TEST(ShareNames, ListingNamesVolumesAndMountedSlots) {
  Appliance{}.shared_name("Music = HD_a2\nUSBDisk1_3 = HD_c3\nUSBDisk1_4 = HD_c4\n");
  const auto table = empty_table();
  table->usb_exist[2] = table->usb_exist[31] = 1;
  const std::string listing = "share name HD_a2=[Music]\nshare name HD_b2=[]\ni=2, [HD_c3]\ni=31, []\n";
  expect_listing([&table] { get_HD_share_name(table.get()); }, listing);
}

TEST(ShareNames, ListingComesBeforeTheDefaults) {
  Appliance{}.shared_name("");
  expect_listing([] { named(); }, "share name HD_a2=[]\nshare name HD_b2=[]\n");
}

TEST(ShareNames, DefaultsOfAMissingFileAreNotListed) {
  expect_silence([] { named(); });
}

TEST(ShareNames, FileThatCannotBeOpenedGivesNoNames) {
  make_unopenable("/etc/shared_name");
  const auto table = named();
  EXPECT_STREQ(table->vol_share_name[0], "");
  EXPECT_STREQ(table->vol_share_name[1], "");
  EXPECT_EQ(usb_names(table), Names{});
}

TEST(ShareNames, FileThatCannotBeOpenedIsReportedAsMissing) {
  make_unopenable("/etc/shared_name");
  expect_listing([] { named(); }, "Not found /etc/shared_name file!\n");
}

TEST(ShareNames, MissingTableIsLeftAlone) {
  Appliance{}.shared_name("Music = HD_a2\n");
  expect_silence([] { get_HD_share_name(nullptr); });
}

} // namespace
} // namespace nasshare::tests
