// rw_list_rule: valid_users follows from readers and writers, and the guest is denied unless all may enter.
#include "access_lists.h"
#include "share.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

struct Lists {
  std::string read, write, deny, valid;
  bool operator==(const Lists &) const = default;
};

Lists lists_of(const smb_share &share) {
  return {share.read_list, share.write_list, share.invalid_users, share.valid_users};
}

Lists ruled(const std::string &read, const std::string &write, const std::string &deny,
            const std::string &valid = "") {
  const Share share = Share{"Music"}.read(read).write(write).deny(deny).valid(valid);
  rw_list_rule(share);
  return lists_of(share);
}

std::string one_long_entry(std::size_t size) {
  return "#" + std::string(size - 2, 'x') + "#";
}

const std::string all(everyone);
const std::string full = numbered_entries(1536);

TEST(ListRule, AShareWithoutListsIsOpenToEveryone) {
  EXPECT_EQ(ruled("", "", ""), (Lists{"", all, "", all}));
}

TEST(ListRule, ValidUsersAreReadersAndWritersSideBySide) {
  EXPECT_EQ(ruled("#a#", "#b#", ""), (Lists{"#a#", "#b#", "#nobody#", "#a#,#b#"}));
  EXPECT_EQ(ruled("#a#,#@g#", "#b#,#c#", ""), (Lists{"#a#,#@g#", "#b#,#c#", "#nobody#", "#a#,#@g#,#b#,#c#"}));
}

TEST(ListRule, DuplicatesAreKept) {
  EXPECT_EQ(ruled("#a#", "#a#", "").valid, "#a#,#a#");
}

TEST(ListRule, ReadersAloneAreValid) {
  EXPECT_EQ(ruled("#a#", "", ""), (Lists{"#a#", "", "#nobody#", "#a#"}));
}

TEST(ListRule, WritersAloneAreValid) {
  EXPECT_EQ(ruled("", "#b#", ""), (Lists{"", "#b#", "#nobody#", "#b#"}));
}

TEST(ListRule, DeniedAloneLeaveTheGuestValidAndDenied) {
  EXPECT_EQ(ruled("", "", "#c#"), (Lists{"", "", "#nobody#,#c#", "#nobody#"}));
}

TEST(ListRule, EveryoneAmongReadersOrWritersMakesEveryoneValid) {
  EXPECT_EQ(ruled(all, "", ""), (Lists{all, "", "", all}));
  EXPECT_EQ(ruled("", all, ""), (Lists{"", all, "", all}));
  EXPECT_EQ(ruled(all, "#b#", ""), (Lists{all, "#b#", "", all}));
  EXPECT_EQ(ruled("#a#", all, ""), (Lists{"#a#", all, "", all}));
  EXPECT_EQ(ruled(all, all, ""), (Lists{all, all, "", all}));
}

TEST(ListRule, TheGuestIsPutBeforeTheDenied) {
  EXPECT_EQ(ruled("", all, "#c#"), (Lists{"", all, "#nobody#,#c#", all}));
  EXPECT_EQ(ruled("#a#", "", "#c#"), (Lists{"#a#", "", "#nobody#,#c#", "#a#"}));
}

TEST(ListRule, AnythingThatContainsTheGuestsNameCountsAsTheGuest) {
  for (const char *deny : {"#nobody#", "#c#,#nobody#", "#nobodyx#", "#xnobody#", "#@nobodies,nobody#",
                           "#nobody#,#@allaccount#"}) {
    SCOPED_TRACE(deny);
    EXPECT_EQ(ruled("#a#", "", deny).deny, deny);
    EXPECT_EQ(ruled("", all, deny).deny, deny);
  }
  EXPECT_EQ(ruled("#a#", "", "#Nobody#").deny, "#nobody#,#Nobody#");
}

TEST(ListRule, EveryoneIsRecognisedOnlyExactly) {
  for (const char *list :
       {"#nobody#, #@allaccount#", "#@allaccount#,#nobody#", "#nobody#,#@allaccount#,#a#",
        "#nobody#,#@allaccount", "#nobody#,#@Domain Users#", "#@allaccount#", "#nobody#"}) {
    SCOPED_TRACE(list);
    EXPECT_EQ(ruled(list, "", ""), (Lists{list, "", "#nobody#", list}));
    EXPECT_EQ(ruled("", list, ""), (Lists{"", list, "#nobody#", list}));
  }
}

TEST(ListRule, ValidUsersAreMadeAnewEveryTime) {
  EXPECT_EQ(ruled("#a#", "", "", "#old#,#older#").valid, "#a#");
  EXPECT_EQ(ruled("", "", "", "#old#").valid, all);
  EXPECT_EQ(ruled("", "", "#c#", "#old#,#older#").valid, "#nobody#");
}

TEST(ListRule, EntriesAreNotExamined) {
  EXPECT_EQ(ruled("a b", "#unknown#", "x"), (Lists{"a b", "#unknown#", "#nobody#,x", "a b,#unknown#"}));
  EXPECT_EQ(ruled("#a#", "#a#", "#a#"), (Lists{"#a#", "#a#", "#nobody#,#a#", "#a#,#a#"}));
}

TEST(ListRule, NoOtherFieldChanges) {
  const Share share = Share{"Music"}
                          .comment("c")
                          .path("/p")
                          .browseable("no")
                          .public_("no")
                          .oplocks("yes")
                          .map_archive("yes")
                          .on_disk("WD-1")
                          .recycle(1, 1);
  smb_share &record = share.record();
  record.next = &record;
  rw_list_rule(&record);
  EXPECT_EQ(record.volume_raid, 1);
  EXPECT_STREQ(record.hd_serial, "WD-1");
  EXPECT_STREQ(record.name, "Music");
  EXPECT_STREQ(record.comment, "c");
  EXPECT_STREQ(record.path, "/p");
  EXPECT_STREQ(record.browseable, "no");
  EXPECT_STREQ(record.public_, "no");
  EXPECT_STREQ(record.oplocks, "yes");
  EXPECT_STREQ(record.map_archive, "yes");
  EXPECT_EQ(record.recycle_enable, 1);
  EXPECT_EQ(record.recycle_tree, 1);
  EXPECT_EQ(record.next, &record);
}

TEST(ListRule, AMissingRecordIsIgnored) {
  rw_list_rule(nullptr);
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(ListRule, TwiceGivesTheSameAsOnce) {
  const std::string lists[] = {"",
                               all,
                               "#nobody#",
                               "#nobody#, #@allaccount#",
                               "#a#",
                               "#a#,#@staff#",
                               "#nobodyx#",
                               "#nobody#,#c#",
                               "##",
                               ",",
                               full,
                               one_long_entry(12287),
                               numbered_entries(1535) + ",#abcdef"};
  for (const std::string &read : lists) {
    for (const std::string &write : lists) {
      for (const std::string &deny : lists) {
        SCOPED_TRACE(read.substr(0, 30) + " | " + write.substr(0, 30) + " | " + deny.substr(0, 30));
        const Share share = Share{"Music"}.read(read).write(write).deny(deny);
        rw_list_rule(share);
        const Lists once = lists_of(share);
        rw_list_rule(share);
        ASSERT_EQ(lists_of(share), once);
      }
    }
  }
}

TEST(ListRule, ValidUsersThatWouldOverflowEndWithAWholeEntry) {
  ASSERT_EQ(full.size(), 12287U);
  EXPECT_EQ(ruled(full, full, "").valid, full);
  EXPECT_EQ(ruled(full, "#b#", "").valid, full);
  EXPECT_EQ(ruled("#a#", full, "").valid, "#a#," + numbered_entries(1535));
  EXPECT_EQ(ruled("#a#", one_long_entry(12287), "").valid, "#a#");
}

TEST(ListRule, DeniedThatWouldOverflowEndWithAWholeEntry) {
  EXPECT_EQ(ruled("#a#", "", full).deny, "#nobody#," + numbered_entries(1534));
  EXPECT_EQ(ruled("", "", numbered_entries(1534)).deny, "#nobody#," + numbered_entries(1534));
  EXPECT_EQ(ruled("", "", one_long_entry(12287)).deny, "#nobody#");
}

TEST(ListRule, FullListsLeaveTheirNeighboursIntact) {
  const Share share = Share{"Music"}.map_archive("yes").read(full).write(full).deny(full).recycle(1, 1);
  rw_list_rule(share);
  EXPECT_STREQ(share.record().map_archive, "yes");
  EXPECT_EQ(share.record().read_list, full);
  EXPECT_EQ(share.record().write_list, full);
  EXPECT_EQ(share.record().invalid_users, "#nobody#," + numbered_entries(1534));
  EXPECT_EQ(share.record().valid_users, full);
  EXPECT_EQ(share.record().recycle_enable, 1);
}

} // namespace
} // namespace nasshare::tests
