// The permissions of one account, carried into the shares of the account list.
#include "access_lists.h"
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr const char *first_file = "/mnt/HD_a4/.systemfile/.smb.xml";
constexpr const char *second_file = "/mnt/HD_b4/.systemfile/.smb.xml";
constexpr const char *all = "#nobody#,#@allaccount#";
constexpr const char *all_of_domain = "#nobody#,#@Domain Users#";

constexpr std::uint32_t no_list = 0;
constexpr std::uint32_t to_read = 1;
constexpr std::uint32_t to_write = 2;
constexpr std::uint32_t to_deny = 3;

struct Lists {
  std::string readers, writers, denied;
  bool operator==(const Lists &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Lists &lists) {
  return out << "R [" << lists.readers << "] W [" << lists.writers << "] I [" << lists.denied << "]";
}

// A listed share with exactly these lists, without what inserting makes of them.
smb_share *listed(const char *name, const Lists &lists) {
  smb_share *share = Insert_Smb_Node(Share{name});
  std::strcpy(share->read_list, lists.readers.c_str());
  std::strcpy(share->write_list, lists.writers.c_str());
  std::strcpy(share->invalid_users, lists.denied.c_str());
  return share;
}

const Lists removed{"no", "such", "share"};

Lists lists_of(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  return share == nullptr ? removed : Lists{share->read_list, share->write_list, share->invalid_users};
}

// The lists of a share once that account got that permission on it.
Lists changed(const Lists &before, const char *account, std::uint32_t permission) {
  Free_All_List();
  free_acnt_list();
  listed("Music", before);
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
    const std::string longer = std::string(all_of_domain) + ",#alice#";
    expect_for_alice({
        {{all_of_domain, "", ""}, to_read, {longer, "", ""}},
        {{all_of_domain, "", ""}, to_deny, {all_of_domain, "", "#alice#"}},
        {{"", all_of_domain, ""}, to_write, {"", longer, ""}},
        {{"", all_of_domain, ""}, no_list, {"", all_of_domain, ""}},
    });
  }
}

TEST(AccountChanges, AFullListStaysAsItIs) {
  const std::string full = numbered_entries(1536);
  EXPECT_EQ(changed({full, "#bob#", "#carol#"}, "alice", to_read), (Lists{full, "#bob#", "#carol#"}));
  EXPECT_EQ(changed({"#alice#", full, "#carol#"}, "alice", to_write), (Lists{"", full, "#carol#"}));
  const std::string with_room = numbered_entries(1535);
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
  EXPECT_EQ(changed({"", all, ""}, account.c_str(), to_deny), (Lists{"", all, ""}));
}

// ---- Everyone, outside a domain

TEST(AccountChanges, EveryoneBecomesEveryoneElse) {
  expect_for_alice({
      {{all, "", ""}, no_list, {"#bob#,#carol#", "", ""}},
      {{all, "", ""}, to_write, {"#bob#,#carol#", "#alice#", ""}},
      {{all, "", ""}, to_deny, {"#bob#,#carol#", "", "#alice#"}},
      {{"", all, ""}, no_list, {"", "#bob#,#carol#", ""}},
      {{"", all, ""}, to_read, {"#alice#", "#bob#,#carol#", ""}},
      {{"", all, ""}, to_deny, {"", "#bob#,#carol#", "#alice#"}},
      {{"", "", all}, no_list, {"", "", "#bob#,#carol#"}},
      {{"", "", all}, to_read, {"#alice#", "", "#bob#,#carol#"}},
      {{"", "", all}, to_write, {"", "#alice#", "#bob#,#carol#"}},
  });
}

TEST(AccountChanges, WhatTheListHeldThatTakesTheAccountIsLost) {
  expect_for_alice({
      {{"#carol#", all, ""}, to_read, {"#alice#", "#bob#,#carol#", ""}},
      {{all, "#carol#", "#nobody#"}, to_write, {"#bob#,#carol#", "#alice#", "#nobody#"}},
      {{all, "", "#nobody#,#carol#"}, to_deny, {"#bob#,#carol#", "", "#alice#"}},
      {{"#bob#", "#alice#,#carol#", all}, to_write, {"#bob#", "#alice#", "#bob#,#carol#"}},
  });
}

// Nor is the account removed from the lists that are not its permission's.
TEST(AccountChanges, TheOtherListsOfAnOpenShareStay) {
  expect_for_alice({
      {{"#alice#", all, "#nobody#,#alice#"}, no_list, {"#alice#", "#bob#,#carol#", "#nobody#,#alice#"}},
      {{all, "#alice#,#bob#", ""}, no_list, {"#bob#,#carol#", "#alice#,#bob#", ""}},
  });
}

TEST(AccountChanges, WhoHasThePermissionLikeEveryoneKeepsIt) {
  expect_for_alice({
      {{all, "", ""}, to_read, {all, "", ""}},
      {{"#carol#", all, ""}, to_write, {"#carol#", all, ""}},
      {{"", "#alice#", all}, to_deny, {"", "#alice#", all}},
      {{all, all, all}, to_read, {all, all, all}},
      {{all, all, all}, to_write, {all, all, all}},
      {{all, all, all}, to_deny, {all, all, all}},
      {{all, all, ""}, to_write, {all, all, ""}},
      {{"", all, all}, to_deny, {"", all, all}},
  });
}

TEST(AccountChanges, OfSeveralOpenListsTheFirstIsMadeExplicit) {
  expect_for_alice({
      {{all, all, ""}, to_deny, {"#bob#,#carol#", all, "#alice#"}},
      {{all, all, all}, no_list, {"#bob#,#carol#", all, all}},
      {{"", all, all}, no_list, {"", "#bob#,#carol#", all}},
      {{all, "", all}, to_write, {"#bob#,#carol#", "#alice#", all}},
      {{"", all, all}, to_read, {"#alice#", "#bob#,#carol#", all}},
  });
}

TEST(AccountChanges, EveryoneElseLeavesOutTheSystemsOwnAccounts) {
  Appliance machine;
  for (const char *name : {"ftp", "admin", "sshd", "squeezecenter", "z700"}) {
    machine.user(name, 2000, 500);
  }
  EXPECT_EQ(changed({all, "", ""}, "bob", no_list), (Lists{"#alice#,#carol#,#z700#", "", ""}));
  EXPECT_EQ(changed({all, "", ""}, "no such user", to_deny),
            (Lists{"#alice#,#bob#,#carol#,#z700#", "", "#no such user#"}));
}

TEST(AccountChanges, AMemberOfNoGroupIsOneOfEveryoneToo) {
  Appliance{}.no_accounts().user("dave", 2000, 2000).user("erin", 2001, 2000);
  EXPECT_EQ(changed({"", all, ""}, "dave", to_read), (Lists{"#dave#", "#erin#", ""}));
}

TEST(AccountChanges, AShareThatOnlyOneAccountCouldUseIsRemovedWithoutIt) {
  Appliance{}.no_accounts().user("alice", 1000, 500);
  EXPECT_EQ(changed({all, "", ""}, "alice", no_list), removed);
}

TEST(AccountChanges, AnyModeButOneIsOutsideADomain) {
  pss->ads_enable = 2;
  EXPECT_EQ(changed({all, "", ""}, "alice", to_write), (Lists{"#bob#,#carol#", "#alice#", ""}));
}

// ---- Everyone, in a domain

TEST(AccountChanges, InADomainTheAccountIsAllThatIsLeftOfAnOpenShare) {
  pss->ads_enable = 1;
  expect_for_alice({
      {{all, "", ""}, to_deny, {"", "", "#alice#"}},
      {{"#bob#", all, "#nobody#"}, to_deny, {"", "", "#alice#"}},
      {{"#bob#", "#carol#", all}, to_deny, {"", "", "#alice#"}},
      {{all, "#bob#", "#carol#"}, to_write, {"", "#alice#", ""}},
      {{"#bob#", all, "#carol#"}, to_read, {"#alice#", "", ""}},
      {{all, "", ""}, to_read, {"#alice#", "", ""}},
      {{"", all, ""}, to_write, {"", "#alice#", ""}},
      {{"#bob#", all, "#carol#"}, no_list, removed},
  });
}

// ---- The account list

TEST(AccountChanges, EveryShareOfTheAccountListIsChangedInItsOrder) {
  for (const char *name : {"A", "B", "C", "D"}) {
    listed(name, {"#alice#", "#bob#", ""});
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
  listed("Music", {"", all, ""});
  insert_acnt_node("Music", to_deny);
  insert_acnt_node("Music", to_read);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("Music"), (Lists{"#alice#", "#bob#,#carol#", ""}));
}

TEST(AccountChanges, UnknownSharesArePassedOver) {
  listed("Music", {"#bob#", "", ""});
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
  listed("Music", {"#bob#", "", ""});
  insert_acnt_node("Music", to_read);
  insert_acnt_node("Films", to_write);
  modify_config_permision("alice");
  ASSERT_EQ(pal->count, 2);
  EXPECT_STREQ(pal->head->name, "Music");
  EXPECT_EQ(pal->tail->type, to_write);
}

TEST(AccountChanges, WithoutAnAccountNothingIsChanged) {
  listed("Music", {"#alice#", "", ""});
  insert_acnt_node("Music", no_list);
  modify_config_permision(nullptr);
  EXPECT_EQ(lists_of("Music"), (Lists{"#alice#", "", ""}));
}

// ---- Shares that nobody can reach

TEST(AccountChanges, AShareWithoutAnyoneIsRemoved) {
  expect_for_alice({
      {{"#alice#", "", ""}, no_list, removed},
      {{"#alice#", "", "#nobody#"}, no_list, removed},
      {{"", "#alice#", "#nobody#"}, no_list, removed},
      {{"#alice#", "", "#nobody#,#carol#"}, no_list, {"", "", "#nobody#,#carol#"}},
      {{"#alice#", "", "#nobody#"}, to_deny, {"", "", "#nobody#,#alice#"}},
      {{"", "", "#alice#"}, no_list, removed},
  });
}

TEST(AccountChanges, EmptySharesAreRemovedWhereverTheyStand) {
  listed("First", {"#alice#", "", "#nobody#"});
  listed("Untouched", {"", "", ""});
  listed("Guest", {"", "", "#nobody#"});
  listed("Kept", {"", "#bob#", ""});
  listed("Last", {"", "#alice#", ""});
  insert_acnt_node("First", no_list);
  insert_acnt_node("Last", no_list);
  insert_acnt_node("Kept", no_list);
  modify_config_permision("alice");
  EXPECT_EQ(pss->count, 1);
  EXPECT_EQ(lists_of("Kept"), (Lists{"", "#bob#", ""}));
}

TEST(AccountChanges, ALastShareThatIsUnknownLeavesTheOthersAsTheyAre) {
  listed("Denied", {"#alice#", "", "#carol#"});
  insert_acnt_node("Denied", no_list);
  insert_acnt_node("Unknown", no_list);
  modify_config_permision("alice");
  EXPECT_EQ(lists_of("Denied"), (Lists{"", "", "#carol#"}));
}

// ---- Debug output

TEST(AccountChanges, TheListsArePrintedWhenTheFlagIsOne) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    Free_All_List();
    free_acnt_list();
    listed("A", {"#alice#,#bob#", "", "#nobody#"});
    listed("B", {"", "#alice#", ""});
    insert_acnt_node("A", to_write);
    insert_acnt_node("Unknown", to_write);
    insert_acnt_node("B", no_list);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { modify_config_permision("alice"); }), flag == 1 ? "1-->#bob#\n"
                                                                               "2-->#alice#\n"
                                                                               "3-->#nobody#\n"
                                                                               "1-->\n"
                                                                               "2-->\n"
                                                                               "3-->\n"
                                                                             : "");
  }
}

TEST(AccountChanges, AnOpenListThatIsMadeExplicitIsPrintedWhenTheFlagIsOne) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] {
                changed({"#carol#", all, ""}, "alice", to_read);
              }),
              flag == 1 ? "$$$list[#nobody#,#@allaccount#]\n"
                          "$$$[#bob#,#carol#]\n"
                          "1-->#alice#\n"
                          "2-->#bob#,#carol#\n"
                          "3-->\n"
                        : "");
  }
}

TEST(AccountChanges, DoingNothingIsSaidWhenTheFlagIsOne) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { changed({all, "", ""}, "alice", to_read); }), flag == 1 ? "[do nothing]\n" : "");
  }
}

TEST(AccountChanges, InADomainTheListsArePrintedWhenTheFlagIsOne) {
  pss->ads_enable = 1;
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] {
                changed({all, "", ""}, "alice", to_read);
              }),
              flag == 1 ? "1-->#alice#\n"
                          "2-->\n"
                          "3-->\n"
                        : "");
  }
}

// ---- The whole operation

// What sync finds: the temporary file, the service command's call.
std::string found_by_sync;

void look_around_at_sync() {
  found_by_sync = std::string(exists("/tmp/.smb.xml") ? "temporary file\n" : "") + transcript();
  if (exists(first_file)) {
    found_by_sync += read_file(first_file);
  }
}

Share stored(const char *name) {
  return Share{name}
      .path(std::string("/mnt/HD/HD_a2/") + name)
      .browseable("yes")
      .public_("yes")
      .oplocks("yes")
      .map_archive("no")
      .on_disk("WD-TESTDISK0001");
}

// Music is read by alice and bob, Films are for everyone, Photos only for alice.
std::vector<Share> stored_shares() {
  return {stored("Music").read("#alice#,#bob#").deny("#nobody#"), stored("Films").everyone(),
          stored("Photos").write("#alice#").deny("#nobody#")};
}

Appliance three_shares() {
  return Appliance::single_disks()
      .shares("/mnt/HD_a4", share_xml(stored_shares()))
      .shares("/mnt/HD_b4", share_xml(stored_shares()));
}

void expect_on_both_volumes(const std::vector<Share> &shares) {
  EXPECT_EQ(read_file(first_file), share_xml(shares));
  EXPECT_EQ(read_file(second_file), share_xml(shares));
}

TEST(AccountModification, IsStoredOnEveryVolume) {
  three_shares();
  insert_acnt_node("Music", to_write);
  insert_acnt_node("Films", to_deny);
  insert_acnt_node("Photos", no_list);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  const std::vector<Share> after{stored("Music").read("#bob#").write("#alice#").deny("#nobody#"),
                                 stored("Films").write("#bob#,#carol#").deny("#alice#")};
  expect_on_both_volumes(after);
  EXPECT_FALSE(exists("/tmp/.smb.xml"));
  EXPECT_EQ(transcript(), "smbcom\n");
  EXPECT_EQ(found_by_sync, share_xml(after)) << "before the service is told";
}

TEST(AccountModification, EmptiesBothLists) {
  three_shares();
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  EXPECT_EQ(is_acnt_empty(), 1);
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AccountModification, TakesItsSharesFromAnAccessControlRecord) {
  three_shares();
  auto record = std::make_unique<smb_ac_node>();
  std::strcpy(record->read, "Photos:Unknown");
  std::strcpy(record->write, "Music");
  std::strcpy(record->deny, ":Films:P2P");
  ac_put_acnt(record.get());
  EXPECT_EQ(acnt_mod_share("carol"), 1);
  expect_on_both_volumes({stored("Music").read("#alice#,#bob#").write("#carol#").deny("#nobody#"),
                          stored("Films").write("#alice#,#bob#").deny("#carol#"),
                          stored("Photos").read("#carol#").write("#alice#").deny("#nobody#")});
}

TEST(AccountModification, IsStoredEvenWhereNothingIsChanged) {
  three_shares().remove(second_file);
  insert_acnt_node("Unknown", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  expect_on_both_volumes(stored_shares());
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(AccountModification, WithoutAnAccountOrAListNothingIsLoaded) {
  three_shares();
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share(""), 0);
  EXPECT_EQ(acnt_mod_share(nullptr), 0);
  EXPECT_EQ(pal->count, 1) << "the list stays";
  expect_on_both_volumes(stored_shares());
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(kernel_requests(), "");
}

// Such a name would come back as another one, or as two.
TEST(AccountModification, AnAccountThatNoListCanHoldChangesNothing) {
  three_shares();
  insert_acnt_node("Music", to_write);
  const std::string long_name(512, 'a');
  for (const char *account : {"a#,#eve", "a,b", "m\xFCller", "a\x01", long_name.c_str()}) {
    SCOPED_TRACE(testing::PrintToString(account));
    EXPECT_EQ(acnt_mod_share(account), 0);
    EXPECT_EQ(pal->count, 1) << "the list stays";
  }
  expect_on_both_volumes(stored_shares());
  EXPECT_EQ(transcript(), "");
}

TEST(AccountModification, OfAnAutomaticShareAloneIsNone) {
  three_shares();
  for (const char *name : {"P2P", "aMule", "USBDisk1_1"}) {
    insert_acnt_node(name, to_write);
  }
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  EXPECT_EQ(transcript(), "");
}

TEST(AccountModification, InADomainTheDomainsFilesAreChanged) {
  const std::vector<Share> before{stored("Music").read("#CORP alice#,#@domain admins#").deny("#nobody#"),
                                  stored("Films").everyone()};
  three_shares()
      .config("/system_mgr/samba/ads_enable", "1")
      .ads_shares("/mnt/HD_a4", share_xml(before))
      .ads_shares("/mnt/HD_b4", share_xml(before));
  insert_acnt_node("Music", to_write);
  insert_acnt_node("Films", to_deny);
  EXPECT_EQ(acnt_mod_share("CORP alice"), 1);
  const std::string after =
      share_xml({stored("Music").read("#@domain admins#").write("#CORP alice#").deny("#nobody#"),
                 stored("Films").deny("#CORP alice#")});
  EXPECT_EQ(read_file("/mnt/HD_a4/.systemfile/.smb_ads.xml"), after);
  EXPECT_EQ(read_file("/mnt/HD_b4/.systemfile/.smb_ads.xml"), after);
  expect_on_both_volumes(stored_shares());
}

TEST(AccountModification, LeavesTheVolumesWhenTheTemporaryFileCannotBeWritten) {
  three_shares().read_only("/tmp");
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  expect_on_both_volumes(stored_shares());
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AccountModification, WithoutAVolumeTheProcessEnds) {
  Appliance{}.disk("sda", "scsi0", "WD-1");
  insert_acnt_node("Music", to_write);
  const Ended ended = run_to_exit([] { acnt_mod_share("alice"); });
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
}

} // namespace
} // namespace nasshare::tests

// Wins over the C library's.
extern "C" [[gnu::visibility("default")]] void sync() noexcept {
  nasshare::tests::look_around_at_sync();
  syscall(SYS_sync);
}
