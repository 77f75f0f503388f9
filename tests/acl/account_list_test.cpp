// The account list: the shares on which one account's permission changes.
#include "fields.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint32_t>>;

Entries listed() {
  Entries entries;
  for (const smb_acnt_node *node : nodes_of(acntlist)) {
    entries.emplace_back(node->name, node->type);
  }
  return entries;
}

struct Record : smb_ac_node {
  Record(const char *read_shares, const char *write_shares, const char *deny_shares) : smb_ac_node{} {
    put(read, read_shares);
    put(write, write_shares);
    put(deny, deny_shares);
  }
};

TEST(AccountList, IsEmptyAtStart) {
  EXPECT_EQ(pal, &acntlist);
  EXPECT_EQ(is_acnt_empty(), 1);
  EXPECT_EQ(pal->count, 0);
}

TEST(AccountList, AFreshNodeIsZeroFilled) {
  const std::unique_ptr<smb_acnt_node, decltype(&std::free)> node(get_acnt_node(), &std::free);
  EXPECT_EQ(std::string(node->name, sizeof node->name), std::string(512, '\0'));
  EXPECT_EQ(node->type, 0U);
  EXPECT_EQ(node->next, nullptr);
  EXPECT_EQ(is_acnt_empty(), 1);
}

TEST(AccountList, InsertingAppendsAtTheTail) {
  smb_acnt_node *music = insert_acnt_node("Music", 2);
  smb_acnt_node *docs = insert_acnt_node("Docs", 3);
  EXPECT_EQ(is_acnt_empty(), 0);
  EXPECT_EQ(pal->count, 2);
  EXPECT_EQ(pal->head, music);
  EXPECT_EQ(pal->tail, docs);
  EXPECT_EQ(listed(), (Entries{{"Music", 2}, {"Docs", 3}}));
}

TEST(AccountList, AShareInsertedTwiceIsTwoNodes) {
  insert_acnt_node("Music", 1);
  insert_acnt_node("Music", 1);
  EXPECT_EQ(listed(), (Entries{{"Music", 1}, {"Music", 1}}));
}

TEST(AccountList, AutomaticSharesAreSkipped) {
  for (const char *name : {"USBDisk1_2", "USBDisk1", "my USBDisk1", "USBDisk10", "P2P", "aMule"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(insert_acnt_node(name, 1), nullptr);
    EXPECT_EQ(is_acnt_empty(), 1);
  }
}

TEST(AccountList, NamesThatOnlyResembleAutomaticSharesAreAdded) {
  for (const char *name : {"P2P_old", "amule", "p2p", "xP2P", "aMule2", "usbdisk1", "USBDisk2_1"}) {
    insert_acnt_node(name, 1);
  }
  EXPECT_EQ(listed(), (Entries{{"P2P_old", 1},
                               {"amule", 1},
                               {"p2p", 1},
                               {"xP2P", 1},
                               {"aMule2", 1},
                               {"usbdisk1", 1},
                               {"USBDisk2_1", 1}}));
}

TEST(AccountList, AMissingNameIsNotInserted) {
  EXPECT_EQ(insert_acnt_node(nullptr, 1), nullptr);
  EXPECT_EQ(is_acnt_empty(), 1);
}

TEST(AccountList, AnyCodeIsKept) {
  EXPECT_EQ(insert_acnt_node("Music", 4294967295U)->type, 4294967295U);
}

TEST(AccountList, AShareNameIsCutToItsFieldAndTheCodeStays) {
  const std::string fits(511, 's');
  const smb_acnt_node *node = insert_acnt_node((fits + "s").c_str(), 2);
  EXPECT_EQ(node->name, fits);
  EXPECT_EQ(node->type, 2U);
  EXPECT_EQ(node->next, nullptr);
}

TEST(AccountList, FreeingLeavesItEmpty) {
  insert_acnt_node("Music", 1);
  insert_acnt_node("Docs", 1);
  free_acnt_list();
  EXPECT_EQ(pal->count, 0);
  EXPECT_EQ(pal->head, nullptr);
  EXPECT_EQ(pal->tail, nullptr);
  free_acnt_list();
  EXPECT_EQ(pal->count, 0);
  smb_acnt_node *again = insert_acnt_node("Again", 1);
  EXPECT_EQ(pal->head, again);
  EXPECT_EQ(pal->tail, again);
}

TEST(AccountList, TheFieldsOfARecordAreSplitAtColons) {
  const Record record("A:B", "", "Z");
  ac_put_acnt(&record);
  EXPECT_EQ(listed(), (Entries{{"A", 1}, {"B", 1}, {"Z", 3}}));
}

TEST(AccountList, ReadWriteAndDenyHaveTheirCodesInThatOrder) {
  const Record record("R", "W", "D");
  ac_put_acnt(&record);
  EXPECT_EQ(listed(), (Entries{{"R", 1}, {"W", 2}, {"D", 3}}));
}

TEST(AccountList, EmptyPiecesAreSkipped) {
  const Record record(":A::B:", ":::", "");
  ac_put_acnt(&record);
  EXPECT_EQ(listed(), (Entries{{"A", 1}, {"B", 1}}));
}

TEST(AccountList, AutomaticSharesOfARecordAreSkipped) {
  const Record record("A:P2P:B", "aMule", "USBDisk1_1:C");
  ac_put_acnt(&record);
  EXPECT_EQ(listed(), (Entries{{"A", 1}, {"B", 1}, {"C", 3}}));
}

TEST(AccountList, ARecordIsAddedToWhatIsListed) {
  insert_acnt_node("First", 1);
  const Record record("", "W", "");
  ac_put_acnt(&record);
  EXPECT_EQ(listed(), (Entries{{"First", 1}, {"W", 2}}));
}

TEST(AccountList, TheRecordStaysAsItWas) {
  const Record record("A:B", "C", "D:E");
  ac_put_acnt(&record);
  EXPECT_STREQ(record.read, "A:B");
  EXPECT_STREQ(record.write, "C");
  EXPECT_STREQ(record.deny, "D:E");
}

TEST(AccountList, AMissingRecordAddsNothing) {
  ac_put_acnt(nullptr);
  EXPECT_EQ(is_acnt_empty(), 1);
}

TEST(AccountList, AFullFieldGivesEveryPiece) {
  std::string shares;
  while (shares.size() + 2 <= 12287) {
    shares += "s:";
  }
  ASSERT_EQ(shares.size(), 12286U);
  shares += "t";
  const Record record(shares.c_str(), "", std::string(12287, 'd').c_str());
  ac_put_acnt(&record);
  EXPECT_EQ(pal->count, 6143 + 1 + 1);
  EXPECT_STREQ(listed()[6143].first.c_str(), "t");
  EXPECT_EQ(listed()[6144].first, std::string(511, 'd'));
}

} // namespace
} // namespace nasshare::tests
