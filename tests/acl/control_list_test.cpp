// The access-control list: permissions per account, in a head that the host program owns.
#include "debug_output.h"
#include "fields.h"
#include "nasshare/acl.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace nasshare::tests {
namespace {

using Node = std::unique_ptr<smb_ac_node, decltype(&std::free)>;

Node node_of(const std::string &name, const std::string &read = "", const std::string &write = "",
             const std::string &deny = "", int exist = 0) {
  Node node(ac_get_node(), &std::free);
  put(node->name, name);
  put(node->read, read);
  put(node->write, write);
  put(node->deny, deny);
  node->exist = exist;
  return node;
}

// The host program's part.
class ControlList : public testing::Test {
protected:
  ControlList() { pacl = &head_; }
  ~ControlList() override { ac_remove_all(); }
  smb_ac_list head_{};
};

TEST(ControlListOfNoHost, IsEmptyAndTakesNothing) {
  EXPECT_EQ(pacl, nullptr);
  EXPECT_EQ(ac_list_empty(), 1);
  ac_add_node(node_of("alice").get());
  EXPECT_EQ(ac_check_node_by_name("alice"), nullptr);
  ac_remove_all();
  EXPECT_EQ(pacl, nullptr);
}

TEST_F(ControlList, AFreshNodeIsZeroFilled) {
  const Node node(ac_get_node(), &std::free);
  EXPECT_EQ(std::string(node->name, sizeof node->name), std::string(512, '\0'));
  EXPECT_EQ(std::string(node->read, sizeof node->read), std::string(12288, '\0'));
  EXPECT_EQ(std::string(node->write, sizeof node->write), std::string(12288, '\0'));
  EXPECT_EQ(std::string(node->deny, sizeof node->deny), std::string(12288, '\0'));
  EXPECT_EQ(node->exist, 0);
  EXPECT_EQ(node->next, nullptr);
  EXPECT_EQ(ac_list_empty(), 1);
}

TEST_F(ControlList, AddingAppendsACopy) {
  const Node record = node_of("alice", "A:B", "C", "D", 7);
  ac_add_node(record.get());
  ac_add_node(node_of("bob").get());
  EXPECT_EQ(ac_list_empty(), 0);
  EXPECT_EQ(head_.count, 2);
  ASSERT_NE(head_.head, nullptr);
  EXPECT_NE(head_.head, record.get());
  EXPECT_STREQ(head_.head->name, "alice");
  EXPECT_STREQ(head_.head->read, "A:B");
  EXPECT_STREQ(head_.head->write, "C");
  EXPECT_STREQ(head_.head->deny, "D");
  EXPECT_EQ(head_.head->exist, 7);
  EXPECT_EQ(head_.head->next, head_.tail);
  EXPECT_STREQ(head_.tail->name, "bob");
  EXPECT_EQ(head_.tail->next, nullptr);
}

TEST_F(ControlList, TheLinkOfTheArgumentIsNotCopied) {
  const Node other = node_of("other");
  const Node record = node_of("alice");
  record->next = other.get();
  ac_add_node(record.get());
  EXPECT_EQ(head_.head->next, nullptr);
}

TEST_F(ControlList, AMissingRecordAddsNothing) {
  ac_add_node(nullptr);
  EXPECT_EQ(ac_list_empty(), 1);
}

TEST_F(ControlList, The257thRecordIsTheLastThatFits) {
  const Node record = node_of("alice");
  for (int i = 0; i < 256; ++i) {
    ac_add_node(record.get());
  }
  EXPECT_EQ(head_.count, 256);
  ac_add_node(record.get());
  EXPECT_EQ(head_.count, 257);
  const smb_ac_node *tail = head_.tail;
  ac_add_node(record.get());
  EXPECT_EQ(head_.count, 257);
  EXPECT_EQ(head_.tail, tail);
}

TEST_F(ControlList, TheFirstRecordOfAnAccountIsFound) {
  ac_add_node(node_of("alice", "first").get());
  ac_add_node(node_of("alice", "second").get());
  EXPECT_STREQ(ac_check_node_by_name("alice")->read, "first");
}

TEST_F(ControlList, OnlyExactlyTheNameIsFound) {
  ac_add_node(node_of("alice").get());
  ac_add_node(node_of("").get());
  EXPECT_EQ(ac_check_node_by_name("Alice"), nullptr);
  EXPECT_EQ(ac_check_node_by_name("alic"), nullptr);
  EXPECT_EQ(ac_check_node_by_name(""), nullptr);
  EXPECT_EQ(ac_check_node_by_name(nullptr), nullptr);
}

TEST_F(ControlList, NothingIsFoundInAnEmptyList) {
  EXPECT_EQ(ac_check_node_by_name("alice"), nullptr);
}

TEST_F(ControlList, CopyingTakesEveryFieldButTheLink) {
  const Node source = node_of("alice", "A", "B", "C", -1);
  const Node target = node_of("old name that is longer", "x:y:z", "x:y:z", "x:y:z", 5);
  source->next = source.get();
  target->next = target.get();
  ac_node_copy(target.get(), source.get());
  EXPECT_STREQ(target->name, "alice");
  EXPECT_STREQ(target->read, "A");
  EXPECT_STREQ(target->write, "B");
  EXPECT_STREQ(target->deny, "C");
  EXPECT_EQ(target->exist, -1);
  EXPECT_EQ(target->next, target.get());
}

TEST_F(ControlList, CopyingFullFieldsKeepsThemWhole) {
  const std::string name(511, 'n');
  const std::string read(12287, 'r');
  const std::string write(12287, 'w');
  const std::string deny(12287, 'd');
  const Node target = node_of("");
  ac_node_copy(target.get(), node_of(name, read, write, deny, 3).get());
  EXPECT_EQ(target->name, name);
  EXPECT_EQ(target->read, read);
  EXPECT_EQ(target->write, write);
  EXPECT_EQ(target->deny, deny);
  EXPECT_EQ(target->exist, 3);
}

TEST_F(ControlList, CopyingWithoutSourceOrTargetDoesNothing) {
  const Node node = node_of("alice");
  ac_node_copy(nullptr, node.get());
  ac_node_copy(node.get(), nullptr);
  EXPECT_STREQ(node->name, "alice");
}

TEST_F(ControlList, RemovingAllLeavesItEmpty) {
  ac_add_node(node_of("alice").get());
  ac_add_node(node_of("bob").get());
  ac_remove_all();
  EXPECT_EQ(head_.count, 0);
  EXPECT_EQ(head_.head, nullptr);
  EXPECT_EQ(head_.tail, nullptr);
  ac_remove_all();
  EXPECT_EQ(head_.count, 0);
  ac_add_node(node_of("carol").get());
  EXPECT_EQ(head_.head, head_.tail);
  EXPECT_STREQ(head_.head->name, "carol");
}

TEST_F(ControlList, IsPrintedForAnyDebugFlagButZero) {
  ac_add_node(node_of("alice", "A:B", "", "Z", 1).get());
  ac_add_node(node_of("bob", "", "W", "", -2).get());
  const std::string printed = "AC list :\n=============================\n"
                              "name  = alice\n"
                              "read  = A:B\n"
                              "write = \n"
                              "deny  = Z\n"
                              "exist = 1\n"
                              "\n"
                              "name  = bob\n"
                              "read  = \n"
                              "write = W\n"
                              "deny  = \n"
                              "exist = -2\n"
                              "\n";
  expect_listing(ac_print_all, printed);
}

TEST_F(ControlList, AnEmptyListIsPrintedAsItsHeading) {
  expect_listing(ac_print_all, "AC list :\n=============================\n");
}

TEST_F(ControlList, AFullFieldIsPrintedWhole) {
  const std::string shares(12287, 'r');
  ac_add_node(node_of("alice", shares).get());
  expect_listing(ac_print_all, "AC list :\n=============================\n"
                               "name  = alice\n"
                               "read  = " +
                                   shares +
                                   "\n"
                                   "write = \n"
                                   "deny  = \n"
                                   "exist = 0\n"
                                   "\n");
}

} // namespace
} // namespace nasshare::tests
