// modify_config_permision: the permissions of one account, carried into the listed shares.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "permission_codes.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

// The lists of a share once that account got that permission on it.
Lists changed(const Lists &before, const char *account, std::uint32_t permission) {
  Free_All_List();
  free_acnt_list();
  list_share("Music", before);
  insert_acnt_node("Music", permission);
  modify_config_permision(account);
  return lists_of("Music");
}

struct Row {
  Lists before;
  std::uint32_t permission;
  Lists after;
};

void expect_for_alice(const std::vector<Row> &rows) {
  for (const Row &row : rows) {
    SCOPED_TRACE(testing::Message() << row.before << ", code " << row.permission);
    EXPECT_EQ(changed(row.before, "alice", row.permission), row.after);
    EXPECT_EQ(Is_Name_Empty(), 1);
  }
}

// ---- Explicit lists

TEST(AccountChanges, TheAccountMovesToTheListOfItsPermission) {
  expect_for_alice({
      {{"#alice#,#bob#", "", ""}, to_write, {"#bob#", "#alice#", ""}},
      {{"#alice#,#bob#", "", ""}, no_list, {"#bob#", "", ""}},
      {{"#alice#,#bob#", "", ""}, to_deny, {"#bob#", "", "#alice#"}},
      {{"#alice#,#bob#", "", ""}, to_read, {"#bob#,#alice#", "", ""}},
      {{"#bob#", "#alice#", ""}, to_read, {"#bob#,#alice#", "", ""}},
      {{"", "#alice#", "#nobody#"}, to_deny, {"", "", "#nobody#,#alice#"}},
      {{"", "#bob#", "#nobody#,#alice#"}, to_write, {"", "#bob#,#alice#", "#nobody#"}},
      {{"", "#bob#", "#alice#"}, no_list, {"", "#bob#", ""}},
      {{"#bob#", "#carol#", ""}, to_write, {"#bob#", "#carol#,#alice#", ""}},
      {{"#alice#,#bob#", "#bob#,#alice#", "#carol#,#alice#"}, no_list, {"#bob#", "#bob#", "#carol#"}},
      {{"#alice#,#bob#,#alice#", "", ""}, no_list, {"#bob#", "", ""}},
      {{"#bob#,#alice#,#carol#", "", ""}, no_list, {"#bob#,#carol#", "", ""}},
  });
}

TEST(AccountChanges, OtherEntriesStay) {
  expect_for_alice({
      {{"#Alice#,#alice2#,#@alice#,#al#", "", ""}, no_list, {"#Alice#,#alice2#,#@alice#,#al#", "", ""}},
      {{"#@staff#,#@allaccount#", "", ""}, to_write, {"#@staff#,#@allaccount#", "#alice#", ""}},
      {{"#@allaccount#,#nobody#", "", ""}, to_deny, {"#@allaccount#,#nobody#", "", "#alice#"}},
      {{"#nobody#,#@allaccount#,#bob#", "", ""}, to_read, {"#nobody#,#@allaccount#,#bob#,#alice#", "", ""}},
      {{"#no such user#", "", ""}, to_read, {"#no such user#,#alice#", "", ""}},
  });
}

TEST(AccountChanges, OddListsAreWrittenAnewAsEntries) {
  expect_for_alice({
      {{"alice,bob", "", ""}, no_list, {"#bob#", "", ""}},
      {{"#bob#,,#carol#,", "", ""}, no_list, {"#bob#,#carol#", "", ""}},
      {{",#alice#bob#", "", ""}, no_list, {"#bob#", "", ""}},
      {{"#,#", "", ""}, no_list, {"##", "", ""}},
  });
}

TEST(AccountChanges, TheAccountNeedNotExist) {
  EXPECT_EQ(changed({"#bob#", "", ""}, "no such user", to_write), (Lists{"#bob#", "#no such user#", ""}));
  EXPECT_EQ(changed({"#bob#,#no such user#", "", ""}, "no such user", no_list), (Lists{"#bob#", "", ""}));
}

TEST(AccountChanges, ACodeWithoutAListOnlyTakesAway) {
  EXPECT_EQ(changed({"#alice#,#bob#", "", ""}, "alice", 4), (Lists{"#bob#", "", ""}));
  EXPECT_EQ(changed({"#alice#,#bob#", "", ""}, "alice", 4294967295U), (Lists{"#bob#", "", ""}));
}

TEST(AccountChanges, ExplicitListsInADomainAreChangedTheSameWay) {
  pss->ads_enable = 1;
  expect_for_alice({
      {{"#alice#,#bob#", "", ""}, to_write, {"#bob#", "#alice#", ""}},
      {{"#@domain admins#", "#alice#", "#nobody#"}, to_deny, {"#@domain admins#", "", "#nobody#,#alice#"}},
  });
}

// The value that means everyone to a domain's members is a list like any other here.
TEST(AccountChanges, TheDomainsEveryoneIsAnExplicitList) {
  for (const int mode : {0, 1}) {
    SCOPED_TRACE(mode);
    pss->ads_enable = mode;
    const std::string longer = std::string(everyone_in_a_domain) + ",#alice#";
    expect_for_alice({
        {{everyone_in_a_domain, "", ""}, to_read, {longer, "", ""}},
        {{everyone_in_a_domain, "", ""}, to_deny, {everyone_in_a_domain, "", "#alice#"}},
        {{"", everyone_in_a_domain, ""}, to_write, {"", longer, ""}},
        {{"", everyone_in_a_domain, ""}, no_list, {"", everyone_in_a_domain, ""}},
    });
  }
}

TEST(AccountChanges, AFullListStaysAsItIs) {
  const std::string full = full_list();
  EXPECT_EQ(changed({full, "#bob#", "#carol#"}, "alice", to_read), (Lists{full, "#bob#", "#carol#"}));
  EXPECT_EQ(changed({"#alice#", full, "#carol#"}, "alice", to_write), (Lists{"", full, "#carol#"}));
  const std::string with_room = numbered_entries(entries_of_a_full_list - 1);
  EXPECT_EQ(changed({with_room, "", "#carol#"}, "alic", to_read),
            (Lists{with_room + ",#alic#", "", "#carol#"}))
      << "12286 bytes";
  EXPECT_EQ(changed({with_room, "", "#carol#"}, "alice", to_read),
            (Lists{with_room + ",#alice#", "", "#carol#"}))
      << "12287 bytes";
  EXPECT_EQ(changed({with_room, "", "#carol#"}, "alice2", to_read), (Lists{with_room, "", "#carol#"}));
}

TEST(AccountChanges, AnOverlongAccountIsInNoList) {
  const std::string account(20000, 'a');
  EXPECT_EQ(changed({"#bob#", "#carol#", ""}, account.c_str(), to_write), (Lists{"#bob#", "#carol#", ""}));
  EXPECT_EQ(changed({"", everyone, ""}, account.c_str(), to_deny), (Lists{"", everyone, ""}));
}

// ---- Everyone, outside a domain

TEST(AccountChanges, EveryoneBecomesEveryoneElse) {
  expect_for_alice({
      {{everyone, "", ""}, no_list, {"#bob#,#carol#", "", ""}},
      {{everyone, "", ""}, to_write, {"#bob#,#carol#", "#alice#", ""}},
      {{everyone, "", ""}, to_deny, {"#bob#,#carol#", "", "#alice#"}},
      {{"", everyone, ""}, no_list, {"", "#bob#,#carol#", ""}},
      {{"", everyone, ""}, to_read, {"#alice#", "#bob#,#carol#", ""}},
      {{"", everyone, ""}, to_deny, {"", "#bob#,#carol#", "#alice#"}},
      {{"", "", everyone}, no_list, {"", "", "#bob#,#carol#"}},
      {{"", "", everyone}, to_read, {"#alice#", "", "#bob#,#carol#"}},
      {{"", "", everyone}, to_write, {"", "#alice#", "#bob#,#carol#"}},
  });
}

TEST(AccountChanges, WhatTheListHeldThatTakesTheAccountIsLost) {
  expect_for_alice({
      {{"#carol#", everyone, ""}, to_read, {"#alice#", "#bob#,#carol#", ""}},
      {{everyone, "#carol#", "#nobody#"}, to_write, {"#bob#,#carol#", "#alice#", "#nobody#"}},
      {{everyone, "", "#nobody#,#carol#"}, to_deny, {"#bob#,#carol#", "", "#alice#"}},
      {{"#bob#", "#alice#,#carol#", everyone}, to_write, {"#bob#", "#alice#", "#bob#,#carol#"}},
  });
}

// Nor is the account removed from the lists that are not its permission's.
TEST(AccountChanges, TheOtherListsOfAnOpenShareStay) {
  expect_for_alice({
      {{"#alice#", everyone, "#nobody#,#alice#"}, no_list, {"#alice#", "#bob#,#carol#", "#nobody#,#alice#"}},
      {{everyone, "#alice#,#bob#", ""}, no_list, {"#bob#,#carol#", "#alice#,#bob#", ""}},
  });
}

TEST(AccountChanges, WhoHasThePermissionLikeEveryoneKeepsIt) {
  expect_for_alice({
      {{everyone, "", ""}, to_read, {everyone, "", ""}},
      {{"#carol#", everyone, ""}, to_write, {"#carol#", everyone, ""}},
      {{"", "#alice#", everyone}, to_deny, {"", "#alice#", everyone}},
      {{everyone, everyone, everyone}, to_read, {everyone, everyone, everyone}},
      {{everyone, everyone, everyone}, to_write, {everyone, everyone, everyone}},
      {{everyone, everyone, everyone}, to_deny, {everyone, everyone, everyone}},
      {{everyone, everyone, ""}, to_write, {everyone, everyone, ""}},
      {{"", everyone, everyone}, to_deny, {"", everyone, everyone}},
  });
}

TEST(AccountChanges, OfSeveralOpenListsTheFirstIsMadeExplicit) {
  expect_for_alice({
      {{everyone, everyone, ""}, to_deny, {"#bob#,#carol#", everyone, "#alice#"}},
      {{everyone, everyone, everyone}, no_list, {"#bob#,#carol#", everyone, everyone}},
      {{"", everyone, everyone}, no_list, {"", "#bob#,#carol#", everyone}},
      {{everyone, "", everyone}, to_write, {"#bob#,#carol#", "#alice#", everyone}},
      {{"", everyone, everyone}, to_read, {"#alice#", "#bob#,#carol#", everyone}},
  });
}

TEST(AccountChanges, EveryoneElseLeavesOutTheSystemsOwnAccounts) {
  Appliance machine;
  for (const char *name : {"ftp", "admin", "sshd", "squeezecenter", "z700"}) {
    machine.user(name, 2000, 500);
  }
  EXPECT_EQ(changed({everyone, "", ""}, "bob", no_list), (Lists{"#alice#,#carol#,#z700#", "", ""}));
  EXPECT_EQ(changed({everyone, "", ""}, "no such user", to_deny),
            (Lists{"#alice#,#bob#,#carol#,#z700#", "", "#no such user#"}));
}

TEST(AccountChanges, AMemberOfNoGroupIsOneOfEveryoneToo) {
  Appliance{}.no_accounts().user("dave", 2000, 2000).user("erin", 2001, 2000);
  EXPECT_EQ(changed({"", everyone, ""}, "dave", to_read), (Lists{"#dave#", "#erin#", ""}));
}

TEST(AccountChanges, AShareThatOnlyOneAccountCouldUseIsRemovedWithoutIt) {
  Appliance{}.no_accounts().user("alice", 1000, 500);
  EXPECT_EQ(changed({everyone, "", ""}, "alice", no_list), no_such_share());
}

TEST(AccountChanges, AnyModeButOneIsOutsideADomain) {
  pss->ads_enable = 2;
  EXPECT_EQ(changed({everyone, "", ""}, "alice", to_write), (Lists{"#bob#,#carol#", "#alice#", ""}));
}

// ---- Everyone, in a domain

TEST(AccountChanges, InADomainTheAccountIsAllThatIsLeftOfAnOpenShare) {
  pss->ads_enable = 1;
  expect_for_alice({
      {{everyone, "", ""}, to_deny, {"", "", "#alice#"}},
      {{"#bob#", everyone, "#nobody#"}, to_deny, {"", "", "#alice#"}},
      {{"#bob#", "#carol#", everyone}, to_deny, {"", "", "#alice#"}},
      {{everyone, "#bob#", "#carol#"}, to_write, {"", "#alice#", ""}},
      {{"#bob#", everyone, "#carol#"}, to_read, {"#alice#", "", ""}},
      {{everyone, "", ""}, to_read, {"#alice#", "", ""}},
      {{"", everyone, ""}, to_write, {"", "#alice#", ""}},
      {{"#bob#", everyone, "#carol#"}, no_list, no_such_share()},
  });
}

// ---- The account list

TEST(AccountChanges, EveryShareOfTheAccountListIsChangedInItsOrder) {
  for (const char *name : {"A", "B", "C", "D"}) {
    list_share(name, {"#alice#", "#bob#", ""});
  }
  insert_acnt_node("C", to_write);
  insert_acnt_node("A", no_list);
  insert_acnt_node("B", to_deny);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("A"), (Lists{"", "#bob#", ""}));
  EXPECT_EQ(lists_of("B"), (Lists{"", "#bob#", "#alice#"}));
  EXPECT_EQ(lists_of("C"), (Lists{"", "#bob#,#alice#", ""}));
  EXPECT_EQ(lists_of("D"), (Lists{"#alice#", "#bob#", ""}));
}

TEST(AccountChanges, TheLastWordOnAShareCounts) {
  list_share("Music", {"", everyone, ""});
  insert_acnt_node("Music", to_deny);
  insert_acnt_node("Music", to_read);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("Music"), (Lists{"#alice#", "#bob#,#carol#", ""}));
}

TEST(AccountChanges, UnknownSharesArePassedOver) {
  list_share("Music", {"#bob#", "", ""});
  insert_acnt_node("music", to_read);
  insert_acnt_node("Films", to_read);
  insert_acnt_node("", to_read);
  insert_acnt_node("Music", to_read);
  insert_acnt_node("Music ", to_write);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("Music"), (Lists{"#bob#,#alice#", "", ""}));
  EXPECT_EQ(pss->count, 1);
}

TEST(AccountChanges, TheAccountListStaysAsItWas) {
  list_share("Music", {"#bob#", "", ""});
  insert_acnt_node("Music", to_read);
  insert_acnt_node("Films", to_write);
  modify_config_permision("alice");
  ASSERT_EQ(pal->count, 2);
  EXPECT_STREQ(pal->head->name, "Music");
  EXPECT_EQ(pal->tail->type, to_write);
}

TEST(AccountChanges, WithoutAnAccountNothingIsChanged) {
  list_share("Music", {"#alice#", "", ""});
  insert_acnt_node("Music", no_list);
  modify_config_permision(nullptr);
  EXPECT_EQ(lists_of("Music"), (Lists{"#alice#", "", ""}));
}

// ---- Shares that nobody can reach

TEST(AccountChanges, AShareWithoutAnyoneIsRemoved) {
  expect_for_alice({
      {{"#alice#", "", ""}, no_list, no_such_share()},
      {{"#alice#", "", "#nobody#"}, no_list, no_such_share()},
      {{"", "#alice#", "#nobody#"}, no_list, no_such_share()},
      {{"#alice#", "", "#nobody#,#carol#"}, no_list, {"", "", "#nobody#,#carol#"}},
      {{"#alice#", "", "#nobody#"}, to_deny, {"", "", "#nobody#,#alice#"}},
      {{"", "", "#alice#"}, no_list, no_such_share()},
  });
}

TEST(AccountChanges, EmptySharesAreRemovedWhereverTheyStand) {
  list_share("First", {"#alice#", "", "#nobody#"});
  list_share("Untouched", {"", "", ""});
  list_share("Guest", {"", "", "#nobody#"});
  list_share("Kept", {"", "#bob#", ""});
  list_share("Last", {"", "#alice#", ""});
  insert_acnt_node("First", no_list);
  insert_acnt_node("Last", no_list);
  insert_acnt_node("Kept", no_list);
  modify_config_permision("alice");
  EXPECT_EQ(pss->count, 1);
  EXPECT_EQ(lists_of("Kept"), (Lists{"", "#bob#", ""}));
}

TEST(AccountChanges, ALastShareThatIsUnknownLeavesTheOthersAsTheyAre) {
  list_share("Denied", {"#alice#", "", "#carol#"});
  insert_acnt_node("Denied", no_list);
  insert_acnt_node("Unknown", no_list);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("Denied"), (Lists{"", "", "#carol#"}));
}

// ---- Debug output

TEST(AccountChanges, TheListsArePrintedWhenTheFlagIsOne) {
  const auto change = [] {
    Free_All_List();
    free_acnt_list();
    list_share("A", {"#alice#,#bob#", "", "#nobody#"});
    list_share("B", {"", "#alice#", ""});
    insert_acnt_node("A", to_write);
    insert_acnt_node("Unknown", to_write);
    insert_acnt_node("B", no_list);
    modify_config_permision("alice");
  };
  expect_trace(change, "1-->#bob#\n"
                       "2-->#alice#\n"
                       "3-->#nobody#\n"
                       "1-->\n"
                       "2-->\n"
                       "3-->\n");
}

TEST(AccountChanges, AnOpenListThatIsMadeExplicitIsPrintedWhenTheFlagIsOne) {
  expect_trace(
      [] {
        changed({"#carol#", everyone, ""}, "alice", to_read);
      },
      "$$$list[#nobody#,#@allaccount#]\n"
      "$$$[#bob#,#carol#]\n"
      "1-->#alice#\n"
      "2-->#bob#,#carol#\n"
      "3-->\n");
}

TEST(AccountChanges, DoingNothingIsSaidWhenTheFlagIsOne) {
  expect_trace([] { changed({everyone, "", ""}, "alice", to_read); }, "[do nothing]\n");
}

TEST(AccountChanges, InADomainTheListsArePrintedWhenTheFlagIsOne) {
  pss->ads_enable = 1;
  expect_trace(
      [] {
        changed({everyone, "", ""}, "alice", to_read);
      },
      "1-->#alice#\n"
      "2-->\n"
      "3-->\n");
}

} // namespace
} // namespace nasshare::tests
