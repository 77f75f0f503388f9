// Does a user or a group have an entry in an access list?
#include "access_lists.h"
#include "appliance.h"
#include "nasshare/support.h"
#include "output.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

using Names = std::vector<std::string>;

const std::string all(everyone);

void in_a_domain() {
  Appliance{}.config("/system_mgr/samba/ads_enable", "1");
}

// ---- A name, or the members of a group

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

// ---- Outside a domain

TEST(Membership, AUserHasAnEntryByNameOrThroughAGroup) {
  const struct {
    const char *list, *name;
    int listed;
  } rows[] = {
      {"#alice#", "alice", 1},
      {"#alice#,#bob#", "bob", 1},
      {"#alice#", "bob", 0},
      {"#alice#", "alic", 0},
      {"#alice#", "Alice", 0},
      {"#alice#", "#alice#", 0},
      {"#@allaccount#", "carol", 1},
      {"#@staff#", "carol", 0},
      {"#@staff#", "bob", 1},
      {"#carol#,#@staff#", "alice", 1},
      {"#no such user#", "no such user", 1},
      {"#nobody#,#@allaccount#", "carol", 1},
      {"#nobody#,#@allaccount#", "no such user", 1},
      {"#nobody#,#@allaccount#", "@no such group", 1},
      {"#@allaccount#,#nobody#", "no such user", 0},
      {"#nobody#,#@Domain Users#", "alice", 0},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.list) + " | " + row.name);
    EXPECT_EQ(check_user_in_list(row.list, row.name), row.listed);
  }
}

TEST(Membership, AGroupHasAnEntryByItsText) {
  EXPECT_EQ(check_user_in_list("#@staff#", "@staff"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#,#bob#", "@staff"), 1);
  EXPECT_EQ(check_user_in_list("#@staff2#", "@staff"), 0);
  EXPECT_EQ(check_user_in_list("#@staff", "@staff"), 0);
  EXPECT_EQ(check_user_in_list("#alice#,#bob#", "@staff"), 0);
  EXPECT_EQ(check_user_in_list("#@staff#", "staff"), 0);
}

TEST(Membership, AMemberOfTheGroupHasAnEntry) {
  Appliance{}.group("band", 700, {"carol"});
  EXPECT_EQ(check_user_in_list("#@band#", "carol"), 1);
  EXPECT_EQ(check_user_in_list("#@band#", "alice"), 0);
}

TEST(Membership, AGroupNeedsNoGroupDatabase) {
  Appliance{}.remove("/etc/group");
  EXPECT_EQ(check_user_in_list("#@staff#", "@staff"), 1);
  EXPECT_EQ(check_user_in_list("#@staff#", "alice"), 0);
}

TEST(Membership, AGroupWhoseMemberHasItsNameIsListed) {
  Appliance{}.group("odd", 700, {"@staff"});
  EXPECT_EQ(check_user_in_list("#@odd#", "@staff"), 1);
}

TEST(Membership, NobodyHasAnEntryInAnEmptyList) {
  EXPECT_EQ(check_user_in_list("", "alice"), 0);
  EXPECT_EQ(check_user_in_list(nullptr, "alice"), 0);
  EXPECT_EQ(check_user_in_list("#alice#", ""), 0);
  EXPECT_EQ(check_user_in_list("#alice#", nullptr), 0);
  EXPECT_EQ(check_user_in_list(nullptr, nullptr), 0);
}

TEST(Membership, AnswersAlikeForWhateverTheNameListHeld) {
  Insert_Name_Node("carol");
  EXPECT_EQ(check_user_in_list("#bob#", "carol"), 0);
  EXPECT_EQ(Is_Name_Empty(), 1);
  EXPECT_EQ(check_user_in_list("#bob#", "bob"), 1);
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(Membership, TheNamesArePrintedForAnyDebugFlagButZero) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { check_user_in_list("#carol#,#@staff#", "bob"); }),
              flag == 0 ? "" : "Name = carol\nName = alice\nName = bob\n");
    EXPECT_EQ(output_of([] { check_user_in_list(all.c_str(), "bob"); }), "");
    EXPECT_EQ(output_of([] { check_user_in_list("#@staff#", "@staff"); }), "");
  }
}

TEST(Membership, TheListStaysAsItWas) {
  const std::string list = "#carol#,#@staff#";
  EXPECT_EQ(check_user_in_list(list.c_str(), "bob"), 1);
  EXPECT_EQ(list, "#carol#,#@staff#");
}

TEST(Membership, AFullListIsReadToItsEnd) {
  const std::string full = numbered_entries(1536);
  EXPECT_EQ(check_user_in_list(full.c_str(), "u1535"), 1);
  EXPECT_EQ(check_user_in_list(full.c_str(), "u1536"), 0);
  EXPECT_EQ(check_user_in_list((numbered_entries(1535) + ",#@abc#").c_str(), "@abc"), 1);
}

TEST(Membership, OverlongNamesAreNotListed) {
  EXPECT_EQ(check_user_in_list("#alice#", std::string(20000, 'a').c_str()), 0);
  EXPECT_EQ(check_user_in_list("#@staff#", ("@" + std::string(20000, 'a')).c_str()), 0);
}

// ---- The switch

TEST(Membership, TheModeIsReadFromTheConfiguration) {
  pss->ads_enable = 1;
  EXPECT_EQ(check_user_in_list("#al#", "a"), 0);
  EXPECT_EQ(pss->ads_enable, 0);
  Appliance{}.config("/system_mgr/samba/ads_enable", "2");
  EXPECT_EQ(check_user_in_list("#al#", "a"), 0);
  EXPECT_EQ(pss->ads_enable, 2);
  in_a_domain();
  EXPECT_EQ(check_user_in_list("#al#", "a"), 1);
  EXPECT_EQ(pss->ads_enable, 1);
}

TEST(Membership, WithoutAnArgumentTheModeIsNotRead) {
  in_a_domain();
  EXPECT_EQ(check_user_in_list("", "alice"), 0);
  EXPECT_EQ(check_user_in_list("#alice#", ""), 0);
  EXPECT_EQ(pss->ads_enable, 0);
}

// ---- In a domain

TEST(DomainMembership, AnyPartOfTheListWillDo) {
  in_a_domain();
  EXPECT_EQ(check_user_in_list("#al#", "a"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "@staff"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "staff"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "e#,#@s"), 1);
  EXPECT_EQ(check_user_in_list("#alice#", "alicex"), 0);
  EXPECT_EQ(check_user_in_list("#alice#", "Alice"), 0);
}

TEST(DomainMembership, GroupsAreNotOpened) {
  in_a_domain();
  EXPECT_EQ(check_user_in_list("#@staff#", "bob"), 0);
}

TEST(DomainMembership, TheDomainsUsersAreEveryone) {
  in_a_domain();
  EXPECT_EQ(check_user_in_list("#nobody#,#@Domain Users#", "no such user"), 1);
  EXPECT_EQ(check_user_in_list("#@Domain Users#", "no such user"), 0);
  EXPECT_EQ(check_user_in_list(all.c_str(), "no such user"), 0);
  EXPECT_EQ(check_user_in_list(all.c_str(), "nobody"), 1);
}

TEST(DomainMembership, NothingIsPrinted) {
  in_a_domain();
  smb_dbg_flag = 1;
  EXPECT_EQ(output_of([] { check_user_in_list("#alice#", "alice"); }), "");
}

TEST(DomainMembership, TheNameListStaysAsItWas) {
  in_a_domain();
  Insert_Name_Node("carol");
  EXPECT_EQ(check_user_in_list("#alice#", "alice"), 1);
  EXPECT_EQ(listed_names(), Names{"carol"});
}

} // namespace
} // namespace nasshare::tests
