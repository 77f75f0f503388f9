// retrieve_user_from_group: a name, or the members of a group, for the name list.
#include "appliance.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

TEST(GroupMembers, AUserStandsForItself) {
  retrieve_user_from_group("alice");
  retrieve_user_from_group("no such user");
  EXPECT_EQ(listed_names(), (Names{"alice", "no such user"}));
}

TEST(GroupMembers, AGroupStandsForItsMembersInTheirOrder) {
  Appliance{}.group("band", 700, {"carol", "alice", "stranger"});
  Insert_Name_Node("first");
  retrieve_user_from_group("@band");
  EXPECT_EQ(listed_names(), (Names{"first", "carol", "alice", "stranger"}));
}

TEST(GroupMembers, OfEveryGroupOfThatNameAreTaken) {
  Appliance{}.group("band", 700, {"carol"}).group("band", 701, {"carol", "bob"});
  retrieve_user_from_group("@band");
  EXPECT_EQ(listed_names(), (Names{"carol", "carol", "bob"}));
}

TEST(GroupMembers, OfAnUnknownOrEmptyGroupAreNone) {
  Appliance{}.group("empty", 700);
  for (const char *name : {"@empty", "@unknown", "@Staff", "@staf", "@"}) {
    retrieve_user_from_group(name);
  }
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(GroupMembers, AreReadFromTheStartEveryTime) {
  retrieve_user_from_group("@staff");
  retrieve_user_from_group("@allaccount");
  EXPECT_EQ(listed_names(), (Names{"alice", "bob", "alice", "bob", "carol"}));
}

TEST(GroupMembers, OfNoNameAreNone) {
  retrieve_user_from_group(nullptr);
  EXPECT_EQ(Is_Name_Empty(), 1);
}

} // namespace
} // namespace nasshare::tests
