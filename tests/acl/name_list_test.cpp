// The name list: appending, finding, unlinking, printing.
#include "debug_output.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

TEST(NameList, IsEmptyAtStart) {
  EXPECT_EQ(pnl, &namelist);
  EXPECT_EQ(Is_Name_Empty(), 1);
  EXPECT_EQ(pnl->count, 0);
}

TEST(NameList, InsertingAppendsAtTheTail) {
  smb_name_node *alice = Insert_Name_Node("alice");
  smb_name_node *bob = Insert_Name_Node("bob");
  EXPECT_EQ(Is_Name_Empty(), 0);
  EXPECT_EQ(listed_names(), (Names{"alice", "bob"}));
  EXPECT_EQ(pnl->count, 2);
  EXPECT_EQ(pnl->head, alice);
  EXPECT_EQ(pnl->tail, bob);
  EXPECT_EQ(alice->next, bob);
  EXPECT_EQ(bob->next, nullptr);
}

TEST(NameList, ANameInsertedTwiceIsTwoNodesAndTheFirstIsFound) {
  smb_name_node *first = Insert_Name_Node("alice");
  smb_name_node *second = Insert_Name_Node("alice");
  EXPECT_NE(first, second);
  EXPECT_EQ(pnl->count, 2);
  EXPECT_EQ(Check_Name_Node("alice"), first);
}

TEST(NameList, OnlyExactlyTheNameIsFound) {
  Insert_Name_Node("alice");
  EXPECT_EQ(Check_Name_Node("Alice"), nullptr);
  EXPECT_EQ(Check_Name_Node("alic"), nullptr);
  EXPECT_EQ(Check_Name_Node("alice "), nullptr);
  EXPECT_EQ(Check_Name_Node(""), nullptr);
  EXPECT_EQ(Check_Name_Node(nullptr), nullptr);
}

TEST(NameList, NothingIsFoundInAnEmptyList) {
  EXPECT_EQ(Check_Name_Node("alice"), nullptr);
  Insert_Name_Node("alice");
  Delete_Name_Node(pnl->head);
  EXPECT_EQ(Check_Name_Node("alice"), nullptr);
}

TEST(NameList, AnEmptyNameIsANameLikeAnyOther) {
  smb_name_node *node = Insert_Name_Node("");
  EXPECT_EQ(Check_Name_Node(""), node);
}

TEST(NameList, AMissingNameIsNotInserted) {
  EXPECT_EQ(Insert_Name_Node(nullptr), nullptr);
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(NameList, DeletingTheHeadLeavesTheRest) {
  smb_name_node *head = Insert_Name_Node("alice");
  Insert_Name_Node("bob");
  Delete_Name_Node(head);
  EXPECT_EQ(listed_names(), Names{"bob"});
  EXPECT_EQ(pnl->count, 1);
}

TEST(NameList, DeletingFromTheMiddleClosesTheGap) {
  Insert_Name_Node("alice");
  smb_name_node *middle = Insert_Name_Node("bob");
  Insert_Name_Node("carol");
  Delete_Name_Node(middle);
  EXPECT_EQ(listed_names(), (Names{"alice", "carol"}));
  EXPECT_EQ(pnl->count, 2);
}

TEST(NameList, DeletingTheTailMakesItsPredecessorTheTail) {
  smb_name_node *alice = Insert_Name_Node("alice");
  smb_name_node *bob = Insert_Name_Node("bob");
  Delete_Name_Node(bob);
  EXPECT_EQ(pnl->tail, alice);
  EXPECT_EQ(alice->next, nullptr);
  Insert_Name_Node("carol");
  EXPECT_EQ(listed_names(), (Names{"alice", "carol"}));
}

TEST(NameList, AfterTheOnlyNodeWasDeletedTheNextBecomesHeadAndTail) {
  Delete_Name_Node(Insert_Name_Node("alice"));
  EXPECT_EQ(pnl->count, 0);
  EXPECT_EQ(Is_Name_Empty(), 1);
  smb_name_node *bob = Insert_Name_Node("bob");
  EXPECT_EQ(pnl->head, bob);
  EXPECT_EQ(pnl->tail, bob);
  EXPECT_EQ(bob->next, nullptr);
  EXPECT_EQ(pnl->count, 1);
}

TEST(NameList, DeletingGoesByIdentityAndNotByName) {
  smb_name_node *first = Insert_Name_Node("alice");
  smb_name_node *second = Insert_Name_Node("alice");
  Delete_Name_Node(second);
  EXPECT_EQ(pnl->count, 1);
  EXPECT_EQ(pnl->head, first);
}

TEST(NameList, DeletingWhatIsNotListedIsIgnored) {
  smb_name_node stranger{};
  Delete_Name_Node(&stranger);
  Delete_Name_Node(nullptr);
  EXPECT_EQ(pnl->count, 0);
  Insert_Name_Node("alice");
  Delete_Name_Node(&stranger);
  Delete_Name_Node(nullptr);
  EXPECT_EQ(listed_names(), Names{"alice"});
  EXPECT_EQ(pnl->count, 1);
}

TEST(NameList, FreeingLeavesItEmpty) {
  Insert_Name_Node("alice");
  Insert_Name_Node("bob");
  Free_Name_List();
  EXPECT_EQ(pnl->count, 0);
  EXPECT_EQ(pnl->head, nullptr);
  EXPECT_EQ(pnl->tail, nullptr);
  EXPECT_EQ(Is_Name_Empty(), 1);
  Free_Name_List();
  EXPECT_EQ(pnl->count, 0);
}

TEST(NameList, IsPrintedForAnyDebugFlagButZero) {
  Insert_Name_Node("alice");
  Insert_Name_Node("100%s");
  expect_listing(Print_Name_List, "Name = alice\nName = 100%s\n");
}

TEST(NameList, AnEmptyListPrintsNothing) {
  expect_silence(Print_Name_List);
}

TEST(NameList, ANameIsCutToItsField) {
  const std::string fits(511, 'n');
  smb_name_node *node = Insert_Name_Node((fits + "n").c_str());
  EXPECT_EQ(node->name, fits);
  EXPECT_EQ(node->next, nullptr);
  EXPECT_EQ(Insert_Name_Node(fits.c_str())->name, fits);
}

TEST(NameList, ANameIsCutOnAWholeCharacter) {
  const std::string before(510, 'n');
  EXPECT_EQ(Insert_Name_Node((before + "\u00e9t\u00e9").c_str())->name, before);
}

} // namespace
} // namespace nasshare::tests
