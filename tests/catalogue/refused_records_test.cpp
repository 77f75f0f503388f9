// Records that would not come back as they are, or that would say more in smb.conf than they should.
#include "access_lists.h"
#include "appliance.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

Share films() {
  return Share{"Films"}.path("/mnt/HD/HD_a2/Films").write("#alice#");
}

Share films_called(const std::string &name) {
  return Share{name}.path("/mnt/HD/HD_a2/Films").oplocks("yes").map_archive("no").everyone();
}

Appliance with_films_folder() {
  return Appliance::single_disks().folder("/mnt/HD/HD_a2/Films").folder("/mnt/HD/HD_a2/Line\nEnd");
}

void expect_refused(smb_share *record) {
  EXPECT_EQ(add_share(record), 0);
  EXPECT_FALSE(exists(first_share_file));
  EXPECT_EQ(transcript(), "");
}

TEST(RefusedRecords, LineEndsWouldBeginLinesOfTheirOwn) {
  with_films_folder();
  for (const std::string text : {"x\n[ evil ]\npath = /", "x\ry"}) {
    SCOPED_TRACE(testing::PrintToString(text));
    expect_refused(Share(films()).comment(text));
    expect_refused(Share{text}.path("/mnt/HD/HD_a2/Films"));
    expect_refused(films().oplocks("a\nb"));
    expect_refused(films().map_archive("a\rb"));
    expect_refused(films().read("#" + text + "#"));
    expect_refused(films().deny("#" + text + "#"));
  }
  expect_refused(films().path("/mnt/HD/HD_a2/Line\nEnd"));
}

TEST(RefusedRecords, AlsoOnAChange) {
  with_films_folder();
  ASSERT_EQ(add_share(films()), 1);
  const std::string before = read_file(first_share_file);
  EXPECT_EQ(mod_share(films().comment("a\nb")), 0);
  EXPECT_EQ(read_file(first_share_file), before);
}

TEST(RefusedRecords, AFieldWithoutATerminatorHasNoEnd) {
  with_films_folder();
  const Share share = films();
  overfill(share.record().name, 'n');
  expect_refused(share);
}

// Everyone may write but for those who are denied: none of them may drop out when the guest goes in front.
TEST(RefusedRecords, ADenyListWithoutRoomForTheGuest) {
  with_films_folder();
  constexpr std::size_t room = 12287 - std::string_view("#nobody#,").size();
  std::string denied = "#bob#";
  std::string fits;
  while (denied.size() <= room) {
    fits = denied;
    denied += ",#carol#";
  }
  const Share full = Share(films()).write(everyone_in_a_domain).deny(denied);
  expect_refused(full);
  const Share roomy = Share(films()).write(everyone_in_a_domain).deny(fits);
  EXPECT_EQ(add_share(roomy), 1);
}

// What the drive reports is no text: the record would belong to no volume on the next load.
TEST(RefusedRecords, AVolumeWhoseSerialNoFileGivesBack) {
  with_films_folder().disk("sda", "scsi0",
                           "WD\x01"
                           "0001");
  expect_refused(films());
}

TEST(RefusedRecords, AVolumeWhoseSerialComesBackAsAnother) {
  with_films_folder().disk("sda", "scsi0", "WD&lt;TEST01");
  expect_refused(films());
}

// Of two with one name the next load shows the first.
TEST(RefusedRecords, ANameThatComesBackAsAListedOne) {
  with_films_folder();
  ASSERT_EQ(add_share(films_called("A&B")), 1);
  EXPECT_EQ(add_share(films_called("A&amp;B")), 0);
  EXPECT_EQ(add_share(films_called("A&amp;C")), 1);
  EXPECT_EQ(chk_share("A&C"), 0);
}

TEST(RefusedRecords, AWholeVolumeUnderAnothersName) {
  with_films_folder();
  ASSERT_EQ(add_share(films_called("Volume_1")), 1);
  EXPECT_EQ(add_share(Share(films_called("Volume_2")).path("/mnt/HD/HD_a2")), 0);
  ASSERT_EQ(add_share(Share(films_called("Volume_2")).path("/mnt/HD/HD_b2")), 1);
  const std::string before = read_file(first_share_file);
  const Share moved = Share(films_called("Volume_2")).path("/mnt/HD/HD_a2");
  EXPECT_EQ(mod_share(moved), 0);
  EXPECT_EQ(read_file(first_share_file), before);
}

} // namespace
} // namespace nasshare::tests
