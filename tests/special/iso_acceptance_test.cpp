// Which images of an ISO catalogue become shares, and of what kind, on a volume of every kind.
#include "appliance.h"
#include "iso_catalogue.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "nasshare/special.h"
#include "volume_table.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

constexpr const char *there = "/mnt/isoMount/there";
constexpr const char *missing = "/mnt/isoMount/missing";

constexpr const char *own_disk = "WD-OWN";
constexpr const char *own_array = "UUID=aaaaaaaa:bbbbbbbb:cccccccc:dddddddd";

// What the image's serial is: the volume's own, another disk's, another array's, none.
std::vector<std::string> serials(const std::string &own) {
  return {own, "WD-OTHER", "UUID=11111111:22222222:33333333:44444444", ""};
}

// What becomes of images with one of these kinds, by their serials in the above order. A letter each:
//   =  listed as it stands in the file      4, 5  listed as an image of a volume of that kind
//   -  not listed
struct Row {
  std::vector<const char *> volume_raid;
  const char *folder_there;
  const char *folder_missing;
};
using Rows = std::vector<Row>;

// The image that stands in the file before the one that is looked at.
enum class Before { nothing, disk_image, disk_image_without_folder, mirror_image };

struct Table {
  std::vector<int> volume_kinds;
  const char *volume_id;
  std::vector<Before> before;
  bool changed_by_it; // whether the one before sets list_changed
  Rows rows;
};

const Rows only_its_own_disk_image{
    {{"1"}, "=---", "=---"},
    {{"0", "2", "3", "4", "5", "6", "7", "-1", "", "x"}, "==-=", "==-="},
};
const Rows disk_images_move_in{
    {{"1"}, "4444", "----"},
    {{"0", "2", "3", "4", "5", "6", "7", "-1", "", "x"}, "==-=", "==-="},
};
const Rows after_a_disk_image_moved_in{
    {{"1"}, "4444", "----"},
    {{"0", "2", "3", "4", "5", "6", "7", "-1", "", "x"}, "44-4", "----"},
};
const Rows mirror_images_move_in{
    {{"1"}, "=---", "=---"},
    {{"4"}, "5555", "5555"},
    {{"0", "2", "3", "5", "6", "7", "-1", "", "x"}, "==-=", "==-="},
};
const Rows after_a_mirror_image_moved_in{
    {{"1"}, "5---", "5---"},
    {{"4"}, "5555", "5555"},
    {{"0", "2", "3", "5", "6", "7", "-1", "", "x"}, "55-5", "55-5"},
};

// Only a mirror takes in single-disk images and only an array with parity takes in a mirror's, so no volume
// knows both states.
const std::vector<Table> tables{
    {{1},
     own_disk,
     {Before::nothing, Before::disk_image, Before::mirror_image},
     false,
     only_its_own_disk_image},
    {{0, 2, 3, 6},
     own_array,
     {Before::nothing, Before::disk_image, Before::mirror_image},
     false,
     only_its_own_disk_image},
    {{4}, own_array, {Before::nothing, Before::mirror_image}, false, disk_images_move_in},
    {{4}, own_array, {Before::disk_image}, true, after_a_disk_image_moved_in},
    {{4}, own_array, {Before::disk_image_without_folder}, false, after_a_disk_image_moved_in},
    {{5},
     own_array,
     {Before::nothing, Before::disk_image, Before::disk_image_without_folder},
     false,
     mirror_images_move_in},
    {{5}, own_array, {Before::mirror_image}, true, after_a_mirror_image_moved_in},
};

std::vector<Image> images_before(Before before) {
  switch (before) {
  case Before::disk_image:
    return {{.name = "Before", .volume_raid = "1", .hd_serial = "WD-BEFORE", .mount_path = there}};
  case Before::disk_image_without_folder:
    return {{.name = "Before", .volume_raid = "1", .hd_serial = "WD-BEFORE", .mount_path = missing}};
  case Before::mirror_image:
    return {{.name = "Before", .volume_raid = "4", .hd_serial = "UUID=before", .mount_path = there}};
  default:
    return {};
  }
}

std::string expected(char letter, const Image &image, const std::string &volume_id) {
  switch (letter) {
  case '=':
    return std::to_string(std::atoi(image.volume_raid.c_str())) + " " + image.hd_serial;
  case '-':
    return "not listed";
  default:
    return std::string(1, letter) + " " + volume_id;
  }
}

std::string listed_as(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  return share == nullptr ? "not listed" : std::to_string(share->volume_raid) + " " + share->hd_serial;
}

void expect_outcome(const Table &table, Before before, const Image &image, char letter) {
  SCOPED_TRACE("kind " + image.volume_raid + ", serial " + image.hd_serial + ", at " + image.mount_path);
  std::vector<Image> images = images_before(before);
  images.push_back(image);
  mounted_images(images);
  Free_All_List();
  pss->list_changed = 0;
  isoMount_readXml(0);
  EXPECT_EQ(listed_as("Image"), expected(letter, image, table.volume_id));
  EXPECT_EQ(pss->list_changed, table.changed_by_it || letter == '4' || letter == '5' ? 1 : 0);
}

void expect_row(const Table &table, Before before, const Row &row) {
  const std::vector<std::string> columns = serials(table.volume_id);
  for (const char *kind : row.volume_raid) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      expect_outcome(table, before, {"Image", kind, columns[i], there}, row.folder_there[i]);
      expect_outcome(table, before, {"Image", kind, columns[i], missing}, row.folder_missing[i]);
    }
  }
}

// An array of that kind whose catalogue is read.
void on_array(int kind) {
  Appliance{}.folder(there);
  set_volume(0, kind, "/dev/md1", own_array);
}

TEST(IsoAcceptance, FollowsTheTableForEveryKindOfVolumeAndWhateverCameBefore) {
  Appliance{}.folder(there);
  for (const Table &table : tables) {
    for (const int kind : table.volume_kinds) {
      set_volume(0, kind, "/dev/md1", table.volume_id);
      for (const Before before : table.before) {
        SCOPED_TRACE("volume kind " + std::to_string(kind) + ", before " +
                     std::to_string(static_cast<int>(before)));
        for (const Row &row : table.rows) {
          expect_row(table, before, row);
        }
      }
    }
  }
}

TEST(IsoAcceptance, ASingleDiskImageBindsOnlyWhatFollowsIt) {
  on_array(4);
  mounted_images({{"First", "4", own_array, missing},
                  {"Disk", "1", "WD-OLD", missing},
                  {"Second", "4", own_array, missing},
                  {"Third", "3", own_array, there},
                  {"Foreign", "4", "UUID=other", there}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), (Names{"First", "Third"}));
  EXPECT_EQ(listed_as("First"), std::string("4 ") + own_array);
  EXPECT_EQ(listed_as("Third"), std::string("4 ") + own_array);
}

TEST(IsoAcceptance, AMirrorImageBindsOnlyWhatFollowsIt) {
  on_array(5);
  mounted_images({{"First", "3", own_array, there},
                  {"Mirror", "4", "UUID=other", missing},
                  {"Second", "3", own_array, missing},
                  {"Foreign", "3", "UUID=other", there},
                  {"Disk", "1", own_array, missing}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), (Names{"First", "Mirror", "Second", "Disk"}));
  EXPECT_EQ(listed_as("First"), std::string("3 ") + own_array);
  for (const char *name : {"Mirror", "Second", "Disk"}) {
    EXPECT_EQ(listed_as(name), std::string("5 ") + own_array);
  }
}

TEST(IsoAcceptance, EveryFileIsJudgedAfresh) {
  on_array(4);
  set_volume(1, 4, "/dev/md2", own_array);
  mounted_images({{"Disk", "1", "WD-OLD", missing}});
  Appliance{}.file("/mnt/HD_b4/.systemfile/.iso_mount.xml",
                   iso_catalogue({Image{.name = "Image", .volume_raid = "3", .mount_path = missing}}));
  create_iso_share();
  EXPECT_EQ(listed_as("Image"), "3 WD-1");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(IsoAcceptance, AnImageThatIsDroppedForItsNameBindsToo) {
  on_array(5);
  mounted_images({{"First", "3", own_array, there},
                  {"First", "4", own_array, there},
                  {"Second", "3", own_array, there}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_as("First"), std::string("3 ") + own_array);
  EXPECT_EQ(listed_as("Second"), std::string("5 ") + own_array);
}

TEST(IsoAcceptance, AnythingAtTheMountPathWillDo) {
  on_array(4);
  Appliance{}
      .file("/mnt/isoMount/file", "")
      .link(there, "/mnt/isoMount/link")
      .link(missing, "/mnt/isoMount/dangling")
      .folder("/mnt/isoMount/R&B");
  mounted_images({{"File", "1", "WD-1", "/mnt/isoMount/file"},
                  {"Link", "1", "WD-1", "/mnt/isoMount/link"},
                  {"Dangling", "1", "WD-1", "/mnt/isoMount/dangling"},
                  {"Escaped", "1", "WD-1", "/mnt/isoMount/R&amp;amp;B"},
                  {"Nowhere", "1", "WD-1", ""}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), (Names{"File", "Link", "Escaped"}));
}

// The label of an array's serial counts wherever it stands.
TEST(IsoAcceptance, ASerialThatHoldsTheLabelOfAnArrayIsCompared) {
  on_array(3);
  mounted_images({{"Inside", "3", "MD-UUID=x", there}, {"Lower case", "3", "uuid=x", there}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), Names{"Lower case"});
}

TEST(IsoAcceptance, SerialsAreComparedExactly) {
  set_volume(0, 1, "/dev/sda2", own_disk);
  mounted_images({{"Same", "1", "WD-OWN"},
                  {"Case", "1", "wd-own"},
                  {"Longer", "1", "WD-OWN1"},
                  {"Shorter", "1", "WD-OW"},
                  {"Blank", "1", " WD-OWN"}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), Names{"Same"});
}

TEST(IsoAcceptance, AVolumeWithoutSerialTakesDiskImagesWithoutSerial) {
  set_volume(0, 1, "/dev/sda2", "");
  mounted_images({{"Without", "1", ""}, {"With", "1", "WD-1"}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), Names{"Without"});
}

TEST(IsoAcceptance, ASerialOfTheVolumesFullWidthIsComparedWhole) {
  const std::string full = "UUID=" + std::string(58, 'f');
  set_volume(0, 4, "/dev/md1", full);
  mounted_images({{"Same", "4", full}, {"Longer", "4", full + "f"}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), Names{"Same"});
}

TEST(IsoAcceptance, TheKindIsADecimalNumber) {
  set_volume(0, 1, "/dev/sda2", own_disk);
  const struct {
    const char *text, *outcome;
  } rows[] = {
      {"1", "not listed"},  {" 1", "not listed"},  {"+1", "not listed"},  {"01", "not listed"},
      {"1x", "not listed"}, {"1.9", "not listed"}, {"10", "10 WD-OTHER"}, {"0x1", "0 WD-OTHER"},
      {"x1", "0 WD-OTHER"}, {"", "0 WD-OTHER"},    {"-1", "-1 WD-OTHER"}, {"4", "4 WD-OTHER"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.text);
    Free_All_List();
    mounted_images({{"Image", row.text, "WD-OTHER"}});
    isoMount_readXml(0);
    EXPECT_EQ(listed_as("Image"), row.outcome);
  }
}

TEST(IsoAcceptance, ANumberThatIsTooLargeIsNoSingleDisk) {
  set_volume(0, 1, "/dev/sda2", own_disk);
  mounted_images({{"Image", "99999999999", "WD-OTHER"}, {"Wrapped", "4294967297", "WD-OTHER"}});
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), (Names{"Image", "Wrapped"}));
}

} // namespace
} // namespace nasshare::tests
