// list_item_compare: drops the entries whose names stand in the name list.
#include "access_lists.h"
#include "debug_output.h"
#include "fields.h"
#include "nasshare/acl.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string without(const Names &names, std::string_view text) {
  for (const std::string &name : names) {
    Insert_Name_Node(name.c_str());
  }
  AccessList list(text);
  list_item_compare(list);
  Free_Name_List();
  return list.text();
}

TEST(ListItems, AListedNameIsDroppedAndTheChangeIsNoted) {
  EXPECT_EQ(without({"b"}, "#a#,#b#,#c#"), "#a#,#c#");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(ListItems, AllNamesListedLeaveAnEmptyList) {
  EXPECT_EQ(without({"a", "b", "c"}, "#a#,#b#,#c#"), "");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(ListItems, OrderIsKeptAndEveryOccurrenceGoes) {
  EXPECT_EQ(without({"a", "c"}, "#a#,#b#,#a#,#c#,#d#"), "#b#,#d#");
}

TEST(ListItems, WithoutAMatchNothingIsNoted) {
  EXPECT_EQ(without({"x", "A", "ab", ""}, "#a#,#b#"), "#a#,#b#");
  EXPECT_EQ(without({}, "#a#"), "#a#");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ListItems, TheNoteIsNeverTakenBack) {
  pss->list_changed = 1;
  EXPECT_EQ(without({}, "#a#"), "#a#");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(ListItems, AGroupGoesOnlyByItsNameWithTheAt) {
  EXPECT_EQ(without({"staff"}, "#@staff#,#alice#"), "#@staff#,#alice#");
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(without({"@staff"}, "#@staff#,#alice#"), "#alice#");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(ListItems, AnEmptyListStaysEmpty) {
  EXPECT_EQ(without({"", "a"}, ""), "");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ListItems, TheListIsRewrittenInItsOwnForm) {
  EXPECT_EQ(without({}, "a,b"), "#a#,#b#");
  EXPECT_EQ(without({}, ",#a##,,#b"), "#a#,#b#");
}

TEST(ListItems, ATextOfDelimitersOnlyIsOneEmptyName) {
  EXPECT_EQ(without({}, "#,#"), "##");
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(without({""}, "#,#"), "");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(ListItems, EveryTokenIsPrintedForAnyDebugFlagButZero) {
  expect_listing([] { without({"b"}, "#a#,#b#,#@100%d#"); }, " read from LIST = a\n"
                                                             " read from LIST = b\n"
                                                             " read from LIST = @100%d\n");
}

TEST(ListItems, AnEmptyListPrintsNothing) {
  expect_silence([] { without({"a"}, ""); });
}

TEST(ListItems, AFullListStaysWhole) {
  const std::string full = full_list();
  EXPECT_EQ(without({"alice"}, full), full);
  EXPECT_EQ(without({"u1535"}, full), numbered_entries(1535));
}

TEST(ListItems, AListThatGrowsEndsWithAWholeEntry) {
  const std::string list = repeated("a,", 6143) + "a";
  const std::string grown = "#a#" + repeated(",#a#", 3071);
  ASSERT_EQ(list.size(), 12287U);
  ASSERT_EQ(grown.size(), 12287U);
  EXPECT_EQ(without({}, list), grown);
}

TEST(ListItems, AnEntryThatNoLongerFitsIsLeftOutWhole) {
  // Two bytes more than the list had room for.
  EXPECT_EQ(without({}, numbered_entries(1535) + ",abcdefg"), numbered_entries(1535));
  EXPECT_EQ(without({}, std::string(12287, 'x')), "");
}

TEST(ListItems, AMissingListIsIgnored) {
  Insert_Name_Node("a");
  list_item_compare(nullptr);
  EXPECT_EQ(pss->list_changed, 0);
}

} // namespace
} // namespace nasshare::tests
