// rw_list_rule: valid_users follows from readers and writers, and the guest is denied unless all may enter.
#include "access_lists.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "share.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace nasshare::tests {
namespace {

// What the rule makes of the lists.
struct Ruled {
  Lists lists;
  std::string valid;

  bool operator==(const Ruled &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Ruled &ruled) {
  return out << ruled.lists << " valid [" << ruled.valid << "]";
}

Ruled ruled_lists(const smb_share &share) {
  return {lists_of(share), share.valid_users};
}

Ruled ruled(const std::string &read, const std::string &write, const std::string &deny,
            const std::string &valid = "") {
  const Share share = Share{"Music"}.read(read).write(write).deny(deny).valid(valid);
  rw_list_rule(share);
  return ruled_lists(share.record());
}

const std::string longest = full_list();

TEST(ListRule, AShareWithoutListsIsOpenToEveryone) {
  EXPECT_EQ(ruled("", "", ""), (Ruled{{"", everyone, ""}, everyone}));
}

TEST(ListRule, ValidUsersAreReadersAndWritersSideBySide) {
  EXPECT_EQ(ruled("#a#", "#b#", ""), (Ruled{{"#a#", "#b#", "#nobody#"}, "#a#,#b#"}));
  EXPECT_EQ(ruled("#a#,#@g#", "#b#,#c#", ""),
            (Ruled{{"#a#,#@g#", "#b#,#c#", "#nobody#"}, "#a#,#@g#,#b#,#c#"}));
}

TEST(ListRule, DuplicatesAreKept) {
  EXPECT_EQ(ruled("#a#", "#a#", "").valid, "#a#,#a#");
}

TEST(ListRule, ReadersAloneAreValid) {
  EXPECT_EQ(ruled("#a#", "", ""), (Ruled{{"#a#", "", "#nobody#"}, "#a#"}));
}

TEST(ListRule, WritersAloneAreValid) {
  EXPECT_EQ(ruled("", "#b#", ""), (Ruled{{"", "#b#", "#nobody#"}, "#b#"}));
}

TEST(ListRule, DeniedAloneLeaveTheGuestValidAndDenied) {
  EXPECT_EQ(ruled("", "", "#c#"), (Ruled{{"", "", "#nobody#,#c#"}, "#nobody#"}));
}

TEST(ListRule, EveryoneAmongReadersOrWritersMakesEveryoneValid) {
  EXPECT_EQ(ruled(everyone, "", ""), (Ruled{{everyone, "", ""}, everyone}));
  EXPECT_EQ(ruled("", everyone, ""), (Ruled{{"", everyone, ""}, everyone}));
  EXPECT_EQ(ruled(everyone, "#b#", ""), (Ruled{{everyone, "#b#", ""}, everyone}));
  EXPECT_EQ(ruled("#a#", everyone, ""), (Ruled{{"#a#", everyone, ""}, everyone}));
  EXPECT_EQ(ruled(everyone, everyone, ""), (Ruled{{everyone, everyone, ""}, everyone}));
}

TEST(ListRule, TheGuestIsPutBeforeTheDenied) {
  EXPECT_EQ(ruled("", everyone, "#c#"), (Ruled{{"", everyone, "#nobody#,#c#"}, everyone}));
  EXPECT_EQ(ruled("#a#", "", "#c#"), (Ruled{{"#a#", "", "#nobody#,#c#"}, "#a#"}));
}

TEST(ListRule, AnythingThatContainsTheGuestsNameCountsAsTheGuest) {
  for (const char *deny : {"#nobody#", "#c#,#nobody#", "#nobodyx#", "#xnobody#", "#@nobodies,nobody#",
                           "#nobody#,#@allaccount#"}) {
    SCOPED_TRACE(deny);
    EXPECT_EQ(ruled("#a#", "", deny).lists.deny, deny);
    EXPECT_EQ(ruled("", everyone, deny).lists.deny, deny);
  }
  EXPECT_EQ(ruled("#a#", "", "#Nobody#").lists.deny, "#nobody#,#Nobody#");
}

TEST(ListRule, EveryoneIsRecognisedOnlyExactly) {
  for (const char *list :
       {"#nobody#, #@allaccount#", "#@allaccount#,#nobody#", "#nobody#,#@allaccount#,#a#",
        "#nobody#,#@allaccount", "#nobody#,#@Domain Users#", "#@allaccount#", "#nobody#"}) {
    SCOPED_TRACE(list);
    EXPECT_EQ(ruled(list, "", ""), (Ruled{{list, "", "#nobody#"}, list}));
    EXPECT_EQ(ruled("", list, ""), (Ruled{{"", list, "#nobody#"}, list}));
  }
}

TEST(ListRule, ValidUsersAreMadeAnewEveryTime) {
  EXPECT_EQ(ruled("#a#", "", "", "#old#,#older#").valid, "#a#");
  EXPECT_EQ(ruled("", "", "", "#old#").valid, everyone);
  EXPECT_EQ(ruled("", "", "#c#", "#old#,#older#").valid, "#nobody#");
}

TEST(ListRule, EntriesAreNotExamined) {
  EXPECT_EQ(ruled("a b", "#unknown#", "x"), (Ruled{{"a b", "#unknown#", "#nobody#,x"}, "a b,#unknown#"}));
  EXPECT_EQ(ruled("#a#", "#a#", "#a#"), (Ruled{{"#a#", "#a#", "#nobody#,#a#"}, "#a#,#a#"}));
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
                               everyone,
                               "#nobody#",
                               "#nobody#, #@allaccount#",
                               "#a#",
                               "#a#,#@staff#",
                               "#nobodyx#",
                               "#nobody#,#c#",
                               "##",
                               ",",
                               longest,
                               long_entry(12287),
                               numbered_entries(entries_of_a_full_list - 1) + ",#abcdef"};
  for (const std::string &read : lists) {
    for (const std::string &write : lists) {
      for (const std::string &deny : lists) {
        SCOPED_TRACE(read.substr(0, 30) + " | " + write.substr(0, 30) + " | " + deny.substr(0, 30));
        const Share share = Share{"Music"}.read(read).write(write).deny(deny);
        rw_list_rule(share);
        const Ruled once = ruled_lists(share.record());
        rw_list_rule(share);
        ASSERT_EQ(ruled_lists(share.record()), once);
      }
    }
  }
}

TEST(ListRule, ValidUsersThatWouldOverflowEndWithAWholeEntry) {
  ASSERT_EQ(longest.size(), 12287U);
  EXPECT_EQ(ruled(longest, longest, "").valid, longest);
  EXPECT_EQ(ruled(longest, "#b#", "").valid, longest);
  EXPECT_EQ(ruled("#a#", longest, "").valid, "#a#," + numbered_entries(entries_of_a_full_list - 1));
  EXPECT_EQ(ruled("#a#", long_entry(12287), "").valid, "#a#");
}

TEST(ListRule, DeniedThatWouldOverflowEndWithAWholeEntry) {
  EXPECT_EQ(ruled("#a#", "", longest).lists.deny, "#nobody#," + numbered_entries(entries_of_a_full_list - 2));
  EXPECT_EQ(ruled("", "", numbered_entries(entries_of_a_full_list - 2)).lists.deny,
            "#nobody#," + numbered_entries(entries_of_a_full_list - 2));
  EXPECT_EQ(ruled("", "", long_entry(12287)).lists.deny, "#nobody#");
}

TEST(ListRule, FullListsLeaveTheirNeighboursIntact) {
  const Share share =
      Share{"Music"}.map_archive("yes").read(longest).write(longest).deny(longest).recycle(1, 1);
  rw_list_rule(share);
  EXPECT_STREQ(share.record().map_archive, "yes");
  EXPECT_EQ(share.record().read_list, longest);
  EXPECT_EQ(share.record().write_list, longest);
  EXPECT_EQ(share.record().invalid_users, "#nobody#," + numbered_entries(entries_of_a_full_list - 2));
  EXPECT_EQ(share.record().valid_users, longest);
  EXPECT_EQ(share.record().recycle_enable, 1);
}

} // namespace
} // namespace nasshare::tests
