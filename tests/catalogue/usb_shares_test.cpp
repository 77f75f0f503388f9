// create_usb_share: one share for every mounted USB disk.
#include "access_lists.h"
#include "debug_output.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

void plug_in(int slot, const std::string &share_name, const std::string &folder) {
  pss->usb_exist[slot] = 1;
  put(pss->usb_share_name[slot], share_name);
  put(pss->usb_mount_name[slot], folder);
}

TEST(UsbShares, AreOpenToEveryone) {
  plug_in(0, "USBDisk1_1", "HD_c1");
  create_usb_share();
  ASSERT_EQ(listed_shares(), Names{"USBDisk1_1"});
  const smb_share &share = *pss->head;
  EXPECT_EQ(share.volume_raid, 0);
  EXPECT_STREQ(share.hd_serial, "");
  EXPECT_STREQ(share.comment, "USB Device Share");
  EXPECT_STREQ(share.path, "/mnt/USB/HD_c1");
  EXPECT_STREQ(share.browseable, "yes");
  EXPECT_STREQ(share.public_, "yes");
  EXPECT_STREQ(share.oplocks, "yes");
  EXPECT_STREQ(share.map_archive, "no");
  EXPECT_STREQ(share.read_list, "");
  EXPECT_STREQ(share.write_list, everyone);
  EXPECT_STREQ(share.invalid_users, "");
  EXPECT_STREQ(share.valid_users, everyone);
  EXPECT_EQ(share.recycle_enable, 0);
  EXPECT_EQ(share.recycle_tree, 0);
}

TEST(UsbShares, StandInTheOrderOfTheSlots) {
  plug_in(31, "USBDisk1_c", "HD_c");
  plug_in(4, "USBDisk1_5", "HD_c5");
  plug_in(0, "USBDisk1_1", "HD_c1");
  create_usb_share();
  EXPECT_EQ(listed_shares(), (Names{"USBDisk1_1", "USBDisk1_5", "USBDisk1_c"}));
  EXPECT_STREQ(pss->tail->path, "/mnt/USB/HD_c");
}

TEST(UsbShares, OfAllSlotsFindRoom) {
  for (int slot = 0; slot < 32; ++slot) {
    plug_in(slot, "Stick" + std::to_string(slot), "HD_c" + std::to_string(slot + 1));
  }
  create_usb_share();
  EXPECT_EQ(pss->count, 32);
}

TEST(UsbShares, AreMadeForSlotsThatAreExactlyOne) {
  for (const int mark : {0, 2, -1}) {
    plug_in(3, "USBDisk1_4", "HD_c4");
    pss->usb_exist[3] = mark;
    create_usb_share();
    EXPECT_EQ(listed_shares(), Names{}) << mark;
  }
}

TEST(UsbShares, WithATakenNameAreDroppedSilently) {
  Insert_Smb_Node(Share{"Stick"}.path("/mnt/HD/HD_a2/Stick").read("#alice#"));
  plug_in(0, "Stick", "HD_c1");
  plug_in(1, "Other", "HD_c2");
  expect_silence(create_usb_share);
  EXPECT_EQ(listed_shares(), (Names{"Stick", "Other"}));
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/Stick");
  EXPECT_STREQ(pss->head->read_list, "#alice#");
}

TEST(UsbShares, OfTwoSlotsWithOneNameTheFirstIsMade) {
  plug_in(0, "Stick", "HD_c1");
  plug_in(1, "Stick", "HD_c2");
  create_usb_share();
  EXPECT_EQ(listed_shares(), Names{"Stick"});
  EXPECT_STREQ(pss->head->path, "/mnt/USB/HD_c1");
}

TEST(UsbShares, AreMadeForANameThatDiffersInLetterCase) {
  Insert_Smb_Node(Share{"stick"}.path("/mnt/HD/HD_a2/stick"));
  plug_in(0, "Stick", "HD_c1");
  create_usb_share();
  EXPECT_EQ(listed_shares(), (Names{"stick", "Stick"}));
}

TEST(UsbShares, WithoutANameAreNotMade) {
  plug_in(0, "", "HD_c1");
  create_usb_share();
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(UsbShares, AreAddedToTheList) {
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/Music"));
  plug_in(0, "USBDisk1_1", "HD_c1");
  create_usb_share();
  EXPECT_EQ(listed_shares(), (Names{"Music", "USBDisk1_1"}));
}

TEST(UsbShares, KeepNamesAsLongAsTheFields) {
  plug_in(0, std::string(511, 'n'), std::string(511, 'f'));
  create_usb_share();
  ASSERT_EQ(pss->count, 1);
  EXPECT_EQ(pss->head->name, std::string(511, 'n'));
  EXPECT_STREQ(pss->head->comment, "USB Device Share");
  EXPECT_EQ(pss->head->path, "/mnt/USB/" + std::string(511, 'f'));
  EXPECT_STREQ(pss->head->browseable, "yes");
}

TEST(UsbShares, PrintNothingAndAreNoChange) {
  plug_in(0, "USBDisk1_1", "HD_c1");
  expect_silence(create_usb_share);
  EXPECT_EQ(pss->list_changed, 0);
}

} // namespace
} // namespace nasshare::tests
