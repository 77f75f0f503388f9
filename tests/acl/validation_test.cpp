// What loading does to the access lists: unknown accounts go, redundant entries go, unreachable shares go.
#include "access_lists.h"
#include "appliance.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

const std::string all(everyone);

std::string checked(std::string_view text) {
  AccessList list(text);
  run_check_samba_list(list);
  return list.text();
}

// Puts the share into the catalogue with exactly these lists.
smb_share *listed(const char *name, const std::string &read, const std::string &write,
                  const std::string &deny) {
  Insert_Smb_Node(Share{name});
  smb_share *share = check_smb_share_name(name);
  put(share->read_list, read);
  put(share->write_list, write);
  put(share->invalid_users, deny);
  return share;
}

std::vector<std::string> listed_shares() {
  std::vector<std::string> names;
  const smb_share *share = pss->count == 0 ? nullptr : pss->head;
  for (; share != nullptr; share = share->next) {
    names.emplace_back(share->name);
  }
  return names;
}

using Names = std::vector<std::string>;

// ---- One list

TEST(ListCheck, OnlyKnownAccountsStay) {
  const struct {
    const char *list, *kept;
  } rows[] = {
      {"#alice#,#bob#", "#alice#,#bob#"},
      {"#alice#,#dave#,#bob#", "#alice#,#bob#"},
      {"#dave#,#alice#", "#alice#"},
      {"#alice#,#dave#", "#alice#"},
      {"#@staff#,#@sales#", "#@staff#"},
      {"#@alice#,#staff#", ""},
      {"#dave#,#@sales#", ""},
      {"#Alice#", ""},
      {"#bob#,#alice#,#@staff#,#bob#", "#bob#,#alice#,#@staff#,#bob#"},
      {"alice,bob", "#alice#,#bob#"},
      {"#nobody#,#alice#", "#nobody#,#alice#"},
      {"#,#", ""},
      {"#@#", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.list);
    EXPECT_EQ(checked(row.list), row.kept);
  }
}

TEST(ListCheck, AnAccountOfOneLetterStays) {
  Appliance{}.user("a", 600, 600).group("g", 601);
  EXPECT_EQ(checked("#a#"), "#a#");
  EXPECT_EQ(checked("#@g#"), "#@g#");
}

TEST(ListCheck, EmptyEveryoneAndTheGuestAloneAreLeftAlone) {
  Appliance{}.file("/etc/passwd", "").file("/etc/group", "");
  EXPECT_EQ(checked(""), "");
  EXPECT_EQ(checked(all), all);
  EXPECT_EQ(checked("#nobody#"), "#nobody#");
}

TEST(ListCheck, WithinALongerListTheGuestHasToExist) {
  Appliance{}.file("/etc/passwd", "alice:x:1000:1000::/:/bin/sh\n");
  EXPECT_EQ(checked("#nobody#,#alice#"), "#alice#");
  EXPECT_EQ(checked("#nobody#, #@allaccount#"), "#@allaccount#") << "the blank is a name of its own";
  EXPECT_EQ(checked("#@allaccount#,#nobody#"), "#@allaccount#");
}

TEST(ListCheck, WithoutDatabasesEveryNameIsUnknown) {
  Appliance{}.remove("/etc/passwd").remove("/etc/group");
  EXPECT_EQ(checked("#alice#,#@staff#"), "");
}

TEST(ListCheck, NothingIsNotedOrPrinted) {
  for (const int flag : {0, 1, 2}) {
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { checked("#dave#,#alice#"); }), "");
  }
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ListCheck, AFullListStaysWhole) {
  std::string passwd;
  for (int i = 0; i < 1536; ++i) {
    char line[64];
    std::snprintf(line, sizeof line, "u%04d:x:%d:500::/:/bin/sh\n", i, 2000 + i);
    passwd += line;
  }
  Appliance{}.file("/etc/passwd", passwd);
  const std::string full = numbered_entries(1536);
  ASSERT_EQ(full.size(), 12287U);
  EXPECT_EQ(checked(full), full);
}

TEST(ListCheck, AListThatGrowsEndsWithAWholeEntry) {
  Appliance{}.user("a", 600, 600);
  std::string list = "a";
  std::string grown = "#a#";
  for (int i = 1; i < 6144; ++i) {
    list += ",a";
  }
  for (int i = 1; i < 3072; ++i) {
    grown += ",#a#";
  }
  ASSERT_EQ(list.size(), 12287U);
  EXPECT_EQ(checked(list), grown);
}

TEST(ListCheck, AnOverlongNameIsUnknown) {
  EXPECT_EQ(checked("#" + std::string(600, 'x') + "#,#alice#,#@" + std::string(5000, 'y') + "#"), "#alice#");
}

TEST(ListCheck, AMissingListIsIgnored) {
  run_check_samba_list(nullptr);
  EXPECT_EQ(checked("#alice#"), "#alice#");
}

// ---- The catalogue

TEST(CatalogueCheck, DeletedAccountsLeaveAllThreeLists) {
  const smb_share *share = listed("Music", "#alice#,#dave#", "#dave#,#bob#", "#nobody#,#dave#");
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
  EXPECT_STREQ(share->write_list, "#bob#");
  EXPECT_STREQ(share->invalid_users, "#nobody#");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, EveryShareIsChecked) {
  listed("One", "#alice#,#dave#", "", "#nobody#");
  listed("Two", "", "#dave#,#bob#", "#nobody#");
  check_user_group();
  EXPECT_STREQ(check_smb_share_name("One")->read_list, "#alice#");
  EXPECT_STREQ(check_smb_share_name("Two")->write_list, "#bob#");
}

TEST(CatalogueCheck, WhoCanWriteAnywayIsNoReader) {
  const smb_share *share = listed("Music", "#alice#", all, "");
  check_user_group();
  EXPECT_STREQ(share->read_list, "");
  EXPECT_STREQ(share->write_list, all.c_str());
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(listed_shares(), Names{"Music"});
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(CatalogueCheck, OnlyTheGuestAndTheMembersOfTheGroupOfAllAreEveryone) {
  Appliance{}.user("dave", 1003, 500);
  const smb_share *share = listed("Music", "#nobody#,#alice#,#dave#,#@staff#", all, "#carol#");
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#,#@staff#");
  EXPECT_STREQ(share->invalid_users, "#carol#");
}

TEST(CatalogueCheck, WhoIsDeniedAnywayIsNeitherReaderNorWriter) {
  Appliance{}.user("dave", 1003, 500);
  const smb_share *share = listed("Music", "#alice#,#dave#", "#bob#,#@staff#", all);
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#");
  EXPECT_STREQ(share->write_list, "#@staff#");
  EXPECT_STREQ(share->invalid_users, all.c_str());
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(CatalogueCheck, EveryoneDeniedClearsEveryoneOfTheWritersButTheGroup) {
  const smb_share *share = listed("Music", "#carol#", all, all);
  check_user_group();
  EXPECT_STREQ(share->read_list, "");
  EXPECT_STREQ(share->write_list, "#@allaccount#");
}

TEST(CatalogueCheck, EveryoneAsReaderClearsNothing) {
  const smb_share *share = listed("Music", all, "#alice#", "#bob#");
  check_user_group();
  EXPECT_STREQ(share->read_list, all.c_str());
  EXPECT_STREQ(share->write_list, "#alice#");
  EXPECT_STREQ(share->invalid_users, "#bob#");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, ARemnantOfEveryoneIsNotEveryone) {
  const smb_share *share = listed("Music", "#alice#", "#nobody#,#@allaccount#,#dave#", "");
  check_user_group();
  EXPECT_STREQ(share->write_list, all.c_str());
  EXPECT_STREQ(share->read_list, "") << "the list is everyone once the unknown name is gone";
  const smb_share *other = listed("Other", "#alice#", "#@allaccount#", "#nobody#");
  check_user_group();
  EXPECT_STREQ(other->read_list, "#alice#");
}

TEST(CatalogueCheck, TheNamesOfOneShareDoNotReachTheNext) {
  listed("Open", "", all, "");
  const smb_share *share = listed("Closed", "#alice#", "#bob#", "#nobody#");
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
  EXPECT_STREQ(share->write_list, "#bob#");
}

TEST(CatalogueCheck, ValidUsersAreNotTouched) {
  smb_share *share = listed("Music", "#alice#,#dave#", "", "");
  put(share->valid_users, "#alice#,#dave#");
  check_user_group();
  EXPECT_STREQ(share->valid_users, "#alice#,#dave#");
}

TEST(CatalogueCheck, SharesThatNobodyCanReachAnyMoreAreRemoved) {
  listed("Gone", "#dave#", "#@sales#", "#nobody#");
  listed("AlsoGone", "#dave#", "", "#eve#");
  listed("Stays", "#alice#", "", "#nobody#");
  check_user_group();
  EXPECT_EQ(listed_shares(), Names{"Stays"});
}

TEST(CatalogueCheck, InADomainNothingChanges) {
  pss->ads_enable = 1;
  const smb_share *share = listed("Music", "#dave#", all, "#@sales#");
  listed("Empty", "", "", "#nobody#");
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#");
  EXPECT_STREQ(share->invalid_users, "#@sales#");
  EXPECT_EQ(listed_shares(), (Names{"Music", "Empty"}));
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, EveryModeButOneIsLocal) {
  pss->ads_enable = 2;
  const smb_share *share = listed("Music", "#alice#,#dave#", "", "");
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
}

TEST(CatalogueCheck, AnEmptyCatalogueStaysEmpty) {
  check_user_group();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(CatalogueCheck, PrintsTheComparedTokensForAnyDebugFlagButZero) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    Free_All_List();
    listed("Music", "#alice#,#dave#,#@staff#", all, "#bob#");
    EXPECT_EQ(output_of(check_user_group), flag == 0 ? ""
                                                     : " read from LIST = alice\n"
                                                       " read from LIST = @staff\n");
  }
}

// ---- Shares without any list

TEST(EmptyShares, AreThoseWithoutReadersAndWritersThatDenyNobodyButTheGuest) {
  const struct {
    const char *read, *write, *deny;
    bool stays;
  } rows[] = {
      {"", "", "", false},
      {"", "", "#nobody#", false},
      {"", "", "#nobody#,#alice#", true},
      {"", "", "#alice#", true},
      {"#alice#", "", "", true},
      {"", "#alice#", "", true},
      {"#alice#", "", "#nobody#", true},
      {"", "", "#nobody#,#@allaccount#", true},
      {"", "", "nobody", true},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.read) + " | " + row.write + " | " + row.deny);
    Free_All_List();
    listed("Music", row.read, row.write, row.deny);
    remove_empty_share_node();
    EXPECT_EQ(listed_shares(), row.stays ? Names{"Music"} : Names{});
  }
}

TEST(EmptyShares, AllGoWhereverTheyStand) {
  listed("A", "", "", "");
  listed("B", "", "", "#nobody#");
  listed("C", "#alice#", "", "");
  listed("D", "", "", "");
  listed("E", "", "#alice#", "");
  listed("F", "", "", "");
  remove_empty_share_node();
  EXPECT_EQ(listed_shares(), (Names{"C", "E"}));
  EXPECT_EQ(pss->count, 2);
  EXPECT_STREQ(pss->tail->name, "E");
}

TEST(EmptyShares, GoInADomainToo) {
  pss->ads_enable = 1;
  listed("A", "", "", "#nobody#");
  remove_empty_share_node();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(EmptyShares, NothingHappensInAnEmptyCatalogue) {
  remove_empty_share_node();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

} // namespace
} // namespace nasshare::tests
