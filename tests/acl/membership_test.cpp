// Does a user or a group have an entry in an access list?
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

void switch_domain_mode_on() {
  Appliance{}.config("/system_mgr/samba/ads_enable", "1");
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
  expect_listing([] { check_user_in_list("#carol#,#@staff#", "bob"); },
                 "Name = carol\nName = alice\nName = bob\n");
  expect_silence([] { check_user_in_list(everyone, "bob"); });
  expect_silence([] { check_user_in_list("#@staff#", "@staff"); });
}

TEST(Membership, TheListStaysAsItWas) {
  const std::string list = "#carol#,#@staff#";
  EXPECT_EQ(check_user_in_list(list.c_str(), "bob"), 1);
  EXPECT_EQ(list, "#carol#,#@staff#");
}

TEST(Membership, AFullListIsReadToItsEnd) {
  const std::string full = full_list();
  EXPECT_EQ(check_user_in_list(full.c_str(), "u1535"), 1);
  EXPECT_EQ(check_user_in_list(full.c_str(), "u1536"), 0);
  EXPECT_EQ(check_user_in_list((numbered_entries(entries_of_a_full_list - 1) + ",#@abc#").c_str(), "@abc"),
            1);
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
  switch_domain_mode_on();
  EXPECT_EQ(check_user_in_list("#al#", "a"), 1);
  EXPECT_EQ(pss->ads_enable, 1);
}

TEST(Membership, WithoutAnArgumentTheModeIsNotRead) {
  switch_domain_mode_on();
  EXPECT_EQ(check_user_in_list("", "alice"), 0);
  EXPECT_EQ(check_user_in_list("#alice#", ""), 0);
  EXPECT_EQ(pss->ads_enable, 0);
}

// ---- In a domain

TEST(DomainMembership, AnyPartOfTheListWillDo) {
  switch_domain_mode_on();
  EXPECT_EQ(check_user_in_list("#al#", "a"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "@staff"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "staff"), 1);
  EXPECT_EQ(check_user_in_list("#alice#,#@staff#", "e#,#@s"), 1);
  EXPECT_EQ(check_user_in_list("#alice#", "alicex"), 0);
  EXPECT_EQ(check_user_in_list("#alice#", "Alice"), 0);
}

TEST(DomainMembership, GroupsAreNotOpened) {
  switch_domain_mode_on();
  EXPECT_EQ(check_user_in_list("#@staff#", "bob"), 0);
}

TEST(DomainMembership, TheDomainsUsersAreEveryone) {
  switch_domain_mode_on();
  EXPECT_EQ(check_user_in_list("#nobody#,#@Domain Users#", "no such user"), 1);
  EXPECT_EQ(check_user_in_list("#@Domain Users#", "no such user"), 0);
  EXPECT_EQ(check_user_in_list(everyone, "no such user"), 0);
  EXPECT_EQ(check_user_in_list(everyone, "nobody"), 1);
}

TEST(DomainMembership, NothingIsPrinted) {
  switch_domain_mode_on();
  expect_silence([] { check_user_in_list("#alice#", "alice"); });
}

TEST(DomainMembership, TheNameListStaysAsItWas) {
  switch_domain_mode_on();
  Insert_Name_Node("carol");
  EXPECT_EQ(check_user_in_list("#alice#", "alice"), 1);
  EXPECT_EQ(listed_names(), Names{"carol"});
}

} // namespace
} // namespace nasshare::tests
