// The list of links: appending, finding, unlinking, changes by group, printing.
#include "debug_output.h"
#include "fields.h"
#include "links.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

smb_dfs_node *listed(const Link &link) {
  list_link(link);
  return pdfs->tail;
}

smb_dfs_node *found(const std::string &group, const std::string &local) {
  const smb_dfs_node key = record_of({"", "", local, group});
  return dfs_check_node(&key);
}

TEST(LinkList, IsEmptyAtStart) {
  EXPECT_EQ(pdfs, &dfslist);
  EXPECT_EQ(pdfs->count, 0U);
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(LinkList, AFreshRecordIsZeroFilled) {
  smb_dfs_node *record = dfs_get_node();
  ASSERT_NE(record, nullptr);
  const smb_dfs_node empty{};
  EXPECT_EQ(std::memcmp(record, &empty, sizeof empty), 0);
  EXPECT_EQ(pdfs->count, 0U);
  std::free(record);
}

TEST(LinkList, ACopyTakesTheFourFieldsAndLeavesNext) {
  smb_dfs_node neighbour{};
  smb_dfs_node source = record_of(tunes);
  smb_dfs_node destination = record_of(papers);
  source.next = &source;
  destination.next = &neighbour;
  dfs_node_copy(&destination, &source);
  EXPECT_STREQ(destination.host, "srv1");
  EXPECT_STREQ(destination.share, "music");
  EXPECT_STREQ(destination.local, "tunes");
  EXPECT_STREQ(destination.group, "media");
  EXPECT_EQ(destination.next, &neighbour);
}

TEST(LinkList, ACopyIsCutToItsFields) {
  smb_dfs_node source{};
  overfill(source.host, 'h');
  overfill(source.share, 's');
  overfill(source.local, 'l');
  overfill(source.group, 'g');
  smb_dfs_node destination{};
  dfs_node_copy(&destination, &source);
  EXPECT_EQ(destination.host, std::string(511, 'h'));
  EXPECT_EQ(destination.share, std::string(511, 's'));
  EXPECT_EQ(destination.local, std::string(511, 'l'));
  EXPECT_EQ(destination.group, std::string(511, 'g'));
  EXPECT_EQ(destination.next, nullptr);
}

TEST(LinkList, ACopyWithoutOneOfTheRecordsChangesNothing) {
  smb_dfs_node record = record_of(tunes);
  dfs_node_copy(&record, nullptr);
  dfs_node_copy(nullptr, &record);
  EXPECT_STREQ(record.host, "srv1");
  EXPECT_STREQ(record.group, "media");
}

TEST(LinkList, AddingAppendsACopy) {
  smb_dfs_node record = record_of(tunes);
  record.next = &record;
  dfs_add_node(&record);
  list_link(films);
  record.host[0] = 'X';
  EXPECT_EQ(listed_links(), (Links{tunes, films}));
  EXPECT_EQ(pdfs->count, 2U);
  EXPECT_EQ(dfs_list_empty(), 0);
  EXPECT_NE(pdfs->head, &record);
  EXPECT_EQ(pdfs->head->next, pdfs->tail);
  EXPECT_EQ(pdfs->tail->next, nullptr);
}

TEST(LinkList, AMissingRecordIsNotAdded) {
  dfs_add_node(nullptr);
  EXPECT_EQ(pdfs->count, 0U);
}

TEST(LinkList, TheSameIdentityCanBeListedTwice) {
  list_link(tunes);
  list_link(tunes);
  EXPECT_EQ(listed_links(), (Links{tunes, tunes}));
}

TEST(LinkList, DeletingTheHeadLeavesTheRest) {
  smb_dfs_node *head = listed(tunes);
  list_link(films);
  list_link(papers);
  dfs_del_node(head);
  EXPECT_EQ(listed_links(), (Links{films, papers}));
  EXPECT_EQ(pdfs->count, 2U);
}

TEST(LinkList, DeletingFromTheMiddleClosesTheGap) {
  list_link(tunes);
  smb_dfs_node *middle = listed(films);
  list_link(papers);
  dfs_del_node(middle);
  EXPECT_EQ(listed_links(), (Links{tunes, papers}));
  EXPECT_EQ(pdfs->count, 2U);
}

TEST(LinkList, DeletingTheTailMakesItsPredecessorTheTail) {
  smb_dfs_node *first = listed(tunes);
  dfs_del_node(listed(films));
  EXPECT_EQ(pdfs->tail, first);
  EXPECT_EQ(first->next, nullptr);
  list_link(papers);
  EXPECT_EQ(listed_links(), (Links{tunes, papers}));
}

TEST(LinkList, AfterTheOnlyLinkWasDeletedTheNextBecomesHeadAndTail) {
  dfs_del_node(listed(tunes));
  EXPECT_EQ(pdfs->count, 0U);
  EXPECT_EQ(dfs_list_empty(), 1);
  smb_dfs_node *next = listed(films);
  EXPECT_EQ(pdfs->count, 1U);
  EXPECT_EQ(pdfs->head, next);
  EXPECT_EQ(pdfs->tail, next);
}

TEST(LinkList, CountAloneSaysWhetherItIsEmpty) {
  smb_dfs_node stale = record_of(tunes);
  dfslist = {0, &stale, &stale};
  EXPECT_EQ(dfs_list_empty(), 1);
  EXPECT_EQ(found("media", "tunes"), nullptr);
  dfs_del_node(&stale);
  dfs_delete_node_by_group("media");
  dfs_modify_node_by_group("media", "video");
  EXPECT_STREQ(stale.group, "media");
  list_link(films);
  EXPECT_EQ(listed_links(), Links{films});
  EXPECT_EQ(pdfs->head, pdfs->tail);
}

TEST(LinkList, DeletingGoesByIdentityAndNotByValue) {
  smb_dfs_node *first = listed(tunes);
  dfs_del_node(listed(tunes));
  EXPECT_EQ(pdfs->count, 1U);
  EXPECT_EQ(pdfs->head, first);
}

TEST(LinkList, DeletingWhatIsNotListedIsIgnored) {
  smb_dfs_node stranger = record_of(tunes);
  dfs_del_node(&stranger);
  dfs_del_node(nullptr);
  EXPECT_EQ(pdfs->count, 0U);
  list_link(tunes);
  list_link(films);
  dfs_del_node(&stranger);
  dfs_del_node(nullptr);
  EXPECT_EQ(listed_links(), (Links{tunes, films}));
  EXPECT_EQ(pdfs->count, 2U);
}

TEST(LinkList, ALinkIsFoundByGroupAndLocalTogether) {
  smb_dfs_node *in_media = listed({"srv1", "music", "tunes", "media"});
  smb_dfs_node *in_office = listed({"srv1", "music", "tunes", "office"});
  smb_dfs_node *other = listed({"srv1", "music", "films", "media"});
  EXPECT_EQ(found("media", "tunes"), in_media);
  EXPECT_EQ(found("office", "tunes"), in_office);
  EXPECT_EQ(found("media", "films"), other);
  EXPECT_EQ(found("office", "films"), nullptr);
  EXPECT_EQ(found("tunes", "media"), nullptr);
}

TEST(LinkList, OnlyExactlyTheNamesAreFound) {
  list_link(tunes);
  EXPECT_EQ(found("Media", "tunes"), nullptr);
  EXPECT_EQ(found("media", "Tunes"), nullptr);
  EXPECT_EQ(found("medi", "tunes"), nullptr);
  EXPECT_EQ(found("media", "tunes "), nullptr);
  EXPECT_EQ(found("", ""), nullptr);
}

TEST(LinkList, HostAndShareOfTheKeyPlayNoPart) {
  smb_dfs_node *link = listed(tunes);
  const smb_dfs_node key = record_of({"other", "thing", "tunes", "media"});
  EXPECT_EQ(dfs_check_node(&key), link);
}

TEST(LinkList, TheFirstOfTwoIsFound) {
  smb_dfs_node *first = listed(tunes);
  list_link({"srv9", "other", "tunes", "media"});
  EXPECT_EQ(found("media", "tunes"), first);
}

TEST(LinkList, NothingIsFoundInAnEmptyListOrWithoutAKey) {
  EXPECT_EQ(found("media", "tunes"), nullptr);
  list_link(tunes);
  EXPECT_EQ(dfs_check_node(nullptr), nullptr);
}

TEST(LinkList, AGroupGetsANewNameInAllItsLinks) {
  list_link(tunes);
  list_link(papers);
  list_link(films);
  dfs_modify_node_by_group("media", "video");
  EXPECT_EQ(listed_links(),
            (Links{{"srv1", "music", "tunes", "video"}, papers, {"srv2", "movies", "films", "video"}}));
}

TEST(LinkList, AGroupIsRenamedOnlyByItsExactName) {
  list_link(tunes);
  dfs_modify_node_by_group("Media", "video");
  dfs_modify_node_by_group("medi", "video");
  dfs_modify_node_by_group(nullptr, "video");
  dfs_modify_node_by_group("media", nullptr);
  EXPECT_EQ(listed_links(), Links{tunes});
}

TEST(LinkList, ANewGroupNameIsCutToItsField) {
  list_link(tunes);
  dfs_modify_node_by_group("media", std::string(600, 'g').c_str());
  EXPECT_EQ(listed_links(), (Links{{"srv1", "music", "tunes", std::string(511, 'g')}}));
  EXPECT_EQ(pdfs->head->next, nullptr);
}

TEST(LinkList, AllLinksOfAGroupAreDeleted) {
  list_link(tunes);
  list_link(films);
  list_link(papers);
  list_link({"srv4", "clips", "clips", "media"});
  dfs_delete_node_by_group("media");
  EXPECT_EQ(listed_links(), Links{papers});
  EXPECT_EQ(pdfs->count, 1U);
  EXPECT_EQ(pdfs->tail, pdfs->head);
  list_link(films);
  EXPECT_EQ(listed_links(), (Links{papers, films}));
}

TEST(LinkList, DeletingTheOnlyGroupEmptiesTheList) {
  list_link(tunes);
  list_link(films);
  dfs_delete_node_by_group("media");
  EXPECT_EQ(dfs_list_empty(), 1);
  list_link(papers);
  EXPECT_EQ(listed_links(), Links{papers});
}

TEST(LinkList, AGroupIsDeletedOnlyByItsExactName) {
  list_link(tunes);
  for (const char *group : {"Media", "medi", "media ", "tunes", ""}) {
    dfs_delete_node_by_group(group);
  }
  dfs_delete_node_by_group(nullptr);
  EXPECT_EQ(listed_links(), Links{tunes});
}

TEST(LinkList, RemovingAllLeavesItEmpty) {
  list_link(tunes);
  list_link(papers);
  dfs_remove_all();
  EXPECT_EQ(pdfs->count, 0U);
  EXPECT_EQ(pdfs->head, nullptr);
  EXPECT_EQ(pdfs->tail, nullptr);
  dfs_remove_all();
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(LinkList, IsPrintedForAnyDebugFlagButZero) {
  list_link(tunes);
  list_link({"100%s", "", "a b", "%n"});
  expect_listing(dfs_print_all, "DFS list :\n"
                                "Name = srv1\nshare = music\nlocal = tunes\ngroup = media\n"
                                "Name = 100%s\nshare = \nlocal = a b\ngroup = %n\n"
                                "\n");
}

TEST(LinkList, AnEmptyListIsPrintedWithHeadAndEnd) {
  expect_listing(dfs_print_all, "DFS list :\n\n");
}

} // namespace
} // namespace nasshare::tests
