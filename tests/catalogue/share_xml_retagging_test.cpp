// Which records of a share XML belong to a volume, and how those are tagged anew that were written under the
// older numbering or before the volume became an array.
#include "appliance.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "share.h"
#include "volume_table.h"
#include "xml.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

// Reads volume 0 from a file with these shares.
void load(const std::vector<Share> &shares) {
  Free_All_List();
  pss->list_changed = 0;
  Appliance{}.shares("/mnt/HD_a4", share_xml(shares));
  read_HD_xml(0);
}

using Tags = std::vector<std::string>;

// "name type serial" of every listed share.
Tags tags() {
  Tags result;
  for (const smb_share *share : nodes_of(smbshare)) {
    result.push_back(std::string(share->name) + " " + std::to_string(share->volume_raid) + " " +
                     share->hd_serial);
  }
  return result;
}

// A file with one item of the disk WD-1 whose type is given by that element.
std::string file_of_type(const std::string &volume_raid) {
  return element("config", element("samba", element("item", volume_raid + element("hd_serial", "WD-1") +
                                                                element("name", "Music") +
                                                                element("path", "/mnt/HD/HD_a2/x"))));
}

Share share(const char *name, int type, const char *serial) {
  return Share{name}.tag(type, serial).path("/mnt/HD/HD_a2/x");
}

TEST(Retagging, DecidesEveryRecordByItsTypeAndSerial) {
  struct Row {
    int volume_type;
    const char *device;
    const char *comp_str;
    int type;
    const char *serial;
    const char *loaded; // type and serial; empty when the record is skipped
    int changed;
  };
  const Row rows[] = {
      // A single disk takes its own records; type 0 is the older numbering's.
      {1, "/dev/sda2", "WD-1", 1, "WD-1", "1 WD-1", 0},
      {1, "/dev/sda2", "WD-1", 0, "WD-1", "1 WD-1", 1},
      {1, "/dev/sda2", "WD-1", 0, "WD-2", "", 1},
      {1, "/dev/sda2", "WD-1", 1, "WD-2", "", 0},
      {1, "/dev/sda2", "WD-1", 1, "WD-", "", 0},
      {1, "/dev/sda2", "WD-1", 1, "wd-1", "", 0},
      {1, "/dev/sda2", "WD-1", 1, "WD-1 ", "", 0},
      {1, "/dev/sda2", "WD-1", 1, "UUID=1:2", "", 0},
      {1, "/dev/sda2", "WD-1", 1, "", "", 0},
      // Array records that carry a drive serial belong to the bay with the volume's number.
      {1, "/dev/sda2", "WD-1", 2, "WD-1", "2 WD-1", 0},
      {1, "/dev/sda2", "WD-1", 4, "WD-1", "4 WD-1", 0},
      {1, "/dev/sda2", "WD-1", 4, "WD-2", "", 0},
      {1, "/dev/sda2", "WD-1", 4, "UUID=1:2", "", 0},
      {1, "/dev/sda2", "other", 4, "WD-1", "4 WD-1", 0},
      {1, "/dev/sda2", "other", 1, "WD-1", "", 0},
      // A negative type counts as a large one.
      {1, "/dev/sda2", "other", -1, "WD-1", "-1 WD-1", 0},
      {1, "/dev/sda2", "WD-1", -1, "WD-2", "", 0},
      // An array takes the records with its own UUID as they are.
      {2, "/dev/md1", "UUID=1:2", 2, "UUID=1:2", "2 UUID=1:2", 0},
      {4, "/dev/md1", "UUID=1:2", 4, "UUID=1:2", "4 UUID=1:2", 0},
      {4, "/dev/md1", "UUID=1:2", 3, "UUID=1:2", "3 UUID=1:2", 0},
      {4, "/dev/md1", "UUID=1:2", 4, "UUID=9:9", "", 0},
      {4, "/dev/md1", "UUID=1:2", 4, "x UUID=1:2", "", 0},
      {4, "/dev/md1", "UUID=1:2", 4, "UUID=1:23", "", 0},
      {6, "/dev/md1", "UUID=1:2", 6, "UUID=1:2", "6 UUID=1:2", 0},
      // On an array, a record with a drive serial is of the older numbering.
      {2, "/dev/md1", "UUID=1:2", 1, "WD-7", "2 UUID=1:2", 1},
      {3, "/dev/md1", "UUID=1:2", 2, "WD-7", "3 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", 3, "WD-7", "4 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 4, "WD-7", "5 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 5, "WD-7", "5 UUID=1:2", 1},
      {6, "/dev/md1", "UUID=1:2", 6, "WD-7", "6 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", 7, "WD-7", "7 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", -1, "WD-7", "-1 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", 3, "", "4 UUID=1:2", 1},
      {4, "/dev/md127", "UUID=1:2", 3, "WD-7", "4 UUID=1:2", 1},
      {4, "/dev/mapper/md1", "UUID=1:2", 3, "WD-7", "4 UUID=1:2", 1},
      {4, "x/dev/md1", "UUID=1:2", 3, "WD-7", "4 UUID=1:2", 1},
      // Other devices are no arrays: the drive serial then has to be that of the bay.
      {4, "/dev/mapper/vg1", "UUID=1:2", 3, "WD-7", "", 0},
      {4, "/dev/mapper/vg1", "UUID=1:2", 3, "WD-1", "3 WD-1", 0},
      {2, "/dev/sda2", "UUID=1:2", 1, "WD-1", "", 0},
      {2, "/dev/sda2", "UUID=1:2", 1, "UUID=1:2", "1 UUID=1:2", 0},
      // The older numbering's 0 becomes a single disk, not an array.
      {2, "/dev/md1", "UUID=1:2", 0, "WD-7", "", 1},
      {2, "/dev/md1", "UUID=1:2", 0, "UUID=1:2", "1 UUID=1:2", 1},
      // A mirror that grew into an array with parity takes every mirror's records.
      {5, "/dev/md1", "UUID=1:2", 4, "UUID=9:9", "5 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 4, "UUID=1:2", "5 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 3, "WD-7", "5 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 3, "UUID=9:9", "", 0},
      {5, "/dev/md1", "UUID=1:2", 3, "UUID=1:2", "3 UUID=1:2", 0},
      {5, "/dev/md1", "UUID=1:2", 5, "UUID=1:2", "5 UUID=1:2", 0},
      // A single disk that became a mirror or an array with parity takes every disk's records.
      {4, "/dev/md1", "UUID=1:2", 0, "WD-7", "4 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", 0, "UUID=9:9", "4 UUID=1:2", 1},
      {4, "/dev/md1", "UUID=1:2", 1, "UUID=9:9", "4 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 0, "WD-7", "5 UUID=1:2", 1},
      {5, "/dev/md1", "UUID=1:2", 1, "UUID=9:9", "5 UUID=1:2", 1},
      {4, "/dev/sda2", "UUID=1:2", 1, "WD-7", "4 UUID=1:2", 1},
      {5, "/dev/sda2", "UUID=1:2", 1, "WD-7", "5 UUID=1:2", 1},
  };
  Appliance{}.folder("/mnt/HD/HD_a2/x");
  for (const Row &row : rows) {
    SCOPED_TRACE("volume " + std::to_string(row.volume_type) + " " + row.device + " " + row.comp_str +
                 ", record " + std::to_string(row.type) + " " + row.serial);
    set_volume(0, row.volume_type, row.device, row.comp_str);
    set_disk_serial(0, "WD-1");
    set_disk_serial(1, "WD-2");
    load({share("Music", row.type, row.serial)});
    EXPECT_EQ(tags(), *row.loaded == '\0' ? Tags{} : Tags{std::string("Music ") + row.loaded});
    EXPECT_EQ(pss->list_changed, row.changed);
  }
}

TEST(Retagging, ASingleDiskRecordOfTheOlderNumberingBecomesTypeOne) {
  set_single_disk(0, "WD-1");
  load({share("Music", 0, "WD-1")});
  EXPECT_EQ(tags(), Tags{"Music 1 WD-1"});
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(Retagging, AnArrayRecordOfTheOlderNumberingIsRaisedAndTakesTheUuid) {
  set_array(4, "1:2:3:4");
  load({share("Music", 3, "WD-1")});
  EXPECT_EQ(tags(), Tags{"Music 4 UUID=1:2:3:4"});
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(Retagging, ATypeThatIsNoNumberIsTheOlderNumberings) {
  set_single_disk(0, "WD-1");
  for (const char *type : {"<volume_raid/>", "<volume_raid>x</volume_raid>", ""}) {
    SCOPED_TRACE(type);
    Free_All_List();
    pss->list_changed = 0;
    Appliance{}.shares("/mnt/HD_a4", file_of_type(type));
    read_HD_xml(0);
    EXPECT_EQ(tags(), Tags{"Music 1 WD-1"});
    EXPECT_EQ(pss->list_changed, 1);
  }
}

TEST(Retagging, HugeTypesAreLargeOnes) {
  set_single_disk(0, "WD-1");
  const std::pair<const char *, const char *> rows[] = {
      {"99999999999", "Music 2147483647 WD-1"},
      {"-99999999999", "Music -2147483648 WD-1"},
      {" 4 disks", "Music 4 WD-1"},
  };
  for (const auto &[type, tag] : rows) {
    SCOPED_TRACE(type);
    Free_All_List();
    Appliance{}.shares("/mnt/HD_a4", file_of_type(element("volume_raid", type)));
    read_HD_xml(0);
    EXPECT_EQ(tags(), Tags{tag});
  }
}

TEST(Retagging, AConvertedSingleDiskTurnsTheRestOfTheFile) {
  Appliance{}.folder("/mnt/HD/HD_a2/x").folder("/mnt/HD/HD_a2/y");
  for (const int type : {4, 5}) {
    SCOPED_TRACE(type);
    set_array(type, "1:2");
    const std::string tag = " " + std::to_string(type) + " UUID=1:2";
    load({
        Share{"Before"}.tag(2, "UUID=1:2").path("/mnt/HD/HD_a2/gone"),
        share("Single", 0, "WD-1"),
        Share{"Moved"}.tag(0, "WD-9").path("/mnt/HD_b4/y"),
        Share{"Gone"}.tag(0, "WD-1").path("/mnt/HD/HD_a2/gone"),
        share("Linear", 2, "UUID=1:2"),
        Share{"GoneToo"}.tag(2, "UUID=1:2").path("/mnt/HD/HD_a2/gone"),
        share("Foreign", 2, "UUID=9:9"),
        share("Older", 2, "WD-9"),
    });
    EXPECT_EQ(tags(),
              (Tags{"Before 2 UUID=1:2", "Single" + tag, "Moved" + tag, "Linear" + tag, "Older" + tag}));
    EXPECT_STREQ(check_smb_share_name("Moved")->path, "/mnt/HD/HD_a2/y");
    EXPECT_EQ(pss->list_changed, 1);
  }
}

TEST(Retagging, AConversionIsFoundEvenByARecordThatIsDroppedLater) {
  Appliance{}.folder("/mnt/HD/HD_a2/x");
  set_array(5, "1:2");
  load({Share{"Gone"}.tag(0, "WD-1").path("/mnt/HD/HD_a2/gone"), share("Music", 5, "UUID=1:2"),
        share("Films", 2, "UUID=1:2")});
  EXPECT_EQ(tags(), (Tags{"Music 5 UUID=1:2", "Films 5 UUID=1:2"}));
}

TEST(Retagging, AMirrorThatGrewTurnsTheRestOfTheFileAndKeepsMissingFolders) {
  set_array(5, "1:2");
  load({share("Before", 2, "UUID=1:2"), Share{"Mirror"}.tag(4, "UUID=9:9").path("/mnt/HD/HD_a2/gone"),
        share("Behind", 2, "UUID=1:2"), share("Foreign", 2, "UUID=9:9")});
  EXPECT_EQ(tags(), (Tags{"Before 2 UUID=1:2", "Mirror 5 UUID=1:2", "Behind 5 UUID=1:2"}));
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(Retagging, AMirrorsPathIsNotMoved) {
  set_array(5, "1:2");
  load({Share{"Old"}.tag(4, "UUID=9:9").path("/mnt/HD_a4/x"),
        Share{"Other"}.tag(4, "UUID=9:9").path("/mnt/HD/HD_b2/x"), share("Music", 4, "UUID=9:9")});
  EXPECT_EQ(tags(), Tags{"Music 5 UUID=1:2"});
}

TEST(Retagging, StartsAnewWithEveryFile) {
  Appliance{}.folder("/mnt/HD/HD_a2/x");
  set_array(4, "1:2");
  load({share("Single", 0, "WD-1"), share("Linear", 2, "UUID=1:2")});
  EXPECT_EQ(tags(), (Tags{"Single 4 UUID=1:2", "Linear 4 UUID=1:2"}));
  load({share("Linear", 2, "UUID=1:2")});
  EXPECT_EQ(tags(), Tags{"Linear 2 UUID=1:2"});
}

TEST(Retagging, TheListStaysMarkedAsChanged) {
  set_single_disk(0, "WD-1");
  Appliance{}.shares("/mnt/HD_a4", share_xml({share("Music", 1, "WD-1")}));
  pss->list_changed = 1;
  read_HD_xml(0);
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(Retagging, TheBayWithTheVolumesNumberCounts) {
  set_volume(1, 1, "/dev/sda2", "WD-1");
  set_disk_serial(0, "WD-1");
  set_disk_serial(1, "WD-2");
  Appliance{}.shares("/mnt/HD_b4", share_xml({Share{"A"}.tag(3, "WD-1").path("/mnt/HD/HD_b2/a"),
                                              Share{"B"}.tag(3, "WD-2").path("/mnt/HD/HD_b2/b")}));
  read_HD_xml(1);
  EXPECT_EQ(tags(), Tags{"B 3 WD-2"});
}

TEST(Retagging, ASecondVolumesConversionMovesPathsOntoIt) {
  Appliance{}.folder("/mnt/HD/HD_b2/x");
  set_volume(1, 5, "/dev/md2", "UUID=5:6");
  Appliance{}.shares("/mnt/HD_b4", share_xml({share("Music", 0, "WD-1")}));
  read_HD_xml(1);
  EXPECT_EQ(tags(), Tags{"Music 5 UUID=5:6"});
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_b2/x");
}

TEST(Retagging, AFullComparisonStringFitsIntoTheRecord) {
  set_volume(0, 4, "/dev/md1", "UUID=" + std::string(58, 'f'));
  load({share("Music", 3, "WD-1")});
  EXPECT_EQ(tags(), Tags{"Music 4 UUID=" + std::string(58, 'f')});
}

} // namespace
} // namespace nasshare::tests
