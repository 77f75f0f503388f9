// rebuild_user_list_except_input: every local account but those of the name list.
#include "access_lists.h"
#include "accounts.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string others(const Names &names, std::string_view old = "#old#") {
  for (const std::string &name : names) {
    Insert_Name_Node(name.c_str());
  }
  AccessList list(old);
  EXPECT_EQ(rebuild_user_list_except_input(list), static_cast<char *>(list));
  return list.text();
}

TEST(OtherAccounts, AreThoseOfThePasswordDatabaseInItsOrder) {
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
}

TEST(OtherAccounts, AreNotThoseOfTheNameList) {
  EXPECT_EQ(others({"bob", "@carol", "Alice", "dave"}), "#alice#,#carol#");
}

TEST(OtherAccounts, NeverNameTheSystemsOwn) {
  Appliance appliance;
  for (const char *name : {"ftp", "admin", "sshd", "squeezecenter", "ftp2", "daemon"}) {
    appliance.user(name, 700, 700);
  }
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#,#ftp2#,#daemon#");
}

TEST(OtherAccounts, MayBeNone) {
  EXPECT_EQ(others({"alice", "bob", "carol"}), "");
  Appliance{}.remove("/etc/passwd");
  EXPECT_EQ(others({}), "");
}

TEST(OtherAccounts, LeaveTheNameListAsItIs) {
  EXPECT_EQ(others({"bob"}), "#alice#,#carol#");
  EXPECT_EQ(listed_names(), Names{"bob"});
}

TEST(OtherAccounts, AreReadFromTheStartEveryTime) {
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
}

TEST(OtherAccounts, ArePrintedWhenTheDebugFlagIsOne) {
  expect_trace([] { others({"bob"}, "#old#,#%s#"); }, "$$$list[#old#,#%s#]\n$$$[#alice#,#carol#]\n");
}

TEST(OtherAccounts, ThatDoNotFitAreLeftOutWhole) {
  Appliance{}.file("/etc/passwd", numbered_accounts(2000));
  EXPECT_EQ(others({}), full_list());
}

TEST(OtherAccounts, OfNoListAreNone) {
  EXPECT_EQ(rebuild_user_list_except_input(nullptr), nullptr);
}

} // namespace
} // namespace nasshare::tests
