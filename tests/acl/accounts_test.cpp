// check_user and check_group ask the name service.
#include "appliance.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

TEST(Accounts, AUserOfTheMachineExists) {
  EXPECT_EQ(check_user("alice"), 1);
  EXPECT_EQ(check_user("nobody"), 1);
  EXPECT_EQ(check_user("root"), 1);
}

TEST(Accounts, AGroupOfTheMachineExists) {
  EXPECT_EQ(check_group("staff"), 1);
  EXPECT_EQ(check_group("allaccount"), 1);
}

TEST(Accounts, OthersDoNot) {
  for (const std::string &name :
       {std::string("dave"), std::string("Alice"), std::string("alic"), std::string("alice "),
        std::string(""), std::string("@staff"), std::string("1000"), std::string(600, 'x')}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(check_user(name.c_str()), 0);
    EXPECT_EQ(check_group(name.c_str()), 0);
  }
}

TEST(Accounts, AGroupIsNoUserAndAUserNoGroup) {
  EXPECT_EQ(check_user("staff"), 0);
  EXPECT_EQ(check_group("alice"), 0);
}

TEST(Accounts, AnAccountThatComesLaterIsSeen) {
  EXPECT_EQ(check_user("dave"), 0);
  EXPECT_EQ(check_group("Domain Users"), 0);
  Appliance{}.user("dave", 10001, 10000).group("Domain Users", 10000);
  EXPECT_EQ(check_user("dave"), 1);
  EXPECT_EQ(check_group("Domain Users"), 1);
}

TEST(Accounts, WithoutDatabasesEveryNameIsUnknown) {
  Appliance{}.remove("/etc/passwd").remove("/etc/group");
  EXPECT_EQ(check_user("alice"), 0);
  EXPECT_EQ(check_group("staff"), 0);
}

TEST(Accounts, AMissingNameIsUnknown) {
  EXPECT_EQ(check_user(nullptr), 0);
  EXPECT_EQ(check_group(nullptr), 0);
}

} // namespace
} // namespace nasshare::tests
