// check_user_group: of all listed shares unknown accounts and redundant entries go, and shares that nobody
// can reach.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

TEST(CatalogueCheck, DeletedAccountsLeaveAllThreeLists) {
  const smb_share *share = list_share("Music", {"#alice#,#dave#", "#dave#,#bob#", "#nobody#,#dave#"});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
  EXPECT_STREQ(share->write_list, "#bob#");
  EXPECT_STREQ(share->invalid_users, "#nobody#");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, EveryShareIsChecked) {
  list_share("One", {"#alice#,#dave#", "", "#nobody#"});
  list_share("Two", {"", "#dave#,#bob#", "#nobody#"});
  check_user_group();
  EXPECT_STREQ(check_smb_share_name("One")->read_list, "#alice#");
  EXPECT_STREQ(check_smb_share_name("Two")->write_list, "#bob#");
}

TEST(CatalogueCheck, WhoCanWriteAnywayIsNoReader) {
  const smb_share *share = list_share("Music", {"#alice#", everyone, ""});
  check_user_group();
  EXPECT_STREQ(share->read_list, "");
  EXPECT_STREQ(share->write_list, everyone);
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(listed_shares(), Names{"Music"});
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(CatalogueCheck, OnlyTheGuestAndTheMembersOfTheGroupOfAllAreEveryone) {
  Appliance{}.user("dave", 1003, 500);
  const smb_share *share = list_share("Music", {"#nobody#,#alice#,#dave#,#@staff#", everyone, "#carol#"});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#,#@staff#");
  EXPECT_STREQ(share->invalid_users, "#carol#");
}

TEST(CatalogueCheck, WhoIsDeniedAnywayIsNeitherReaderNorWriter) {
  Appliance{}.user("dave", 1003, 500);
  const smb_share *share = list_share("Music", {"#alice#,#dave#", "#bob#,#@staff#", everyone});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#");
  EXPECT_STREQ(share->write_list, "#@staff#");
  EXPECT_STREQ(share->invalid_users, everyone);
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(CatalogueCheck, EveryoneDeniedClearsEveryoneOfTheWritersButTheGroup) {
  const smb_share *share = list_share("Music", {"#carol#", everyone, everyone});
  check_user_group();
  EXPECT_STREQ(share->read_list, "");
  EXPECT_STREQ(share->write_list, "#@allaccount#");
}

TEST(CatalogueCheck, EveryoneAsReaderClearsNothing) {
  const smb_share *share = list_share("Music", {everyone, "#alice#", "#bob#"});
  check_user_group();
  EXPECT_STREQ(share->read_list, everyone);
  EXPECT_STREQ(share->write_list, "#alice#");
  EXPECT_STREQ(share->invalid_users, "#bob#");
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, ARemnantOfEveryoneIsNotEveryone) {
  const smb_share *share = list_share("Music", {"#alice#", "#nobody#,#@allaccount#,#dave#", ""});
  check_user_group();
  EXPECT_STREQ(share->write_list, everyone);
  EXPECT_STREQ(share->read_list, "") << "the list is everyone once the unknown name is gone";
  const smb_share *other = list_share("Other", {"#alice#", "#@allaccount#", "#nobody#"});
  check_user_group();
  EXPECT_STREQ(other->read_list, "#alice#");
}

TEST(CatalogueCheck, TheNamesOfOneShareDoNotReachTheNext) {
  list_share("Open", {"", everyone, ""});
  const smb_share *share = list_share("Closed", {"#alice#", "#bob#", "#nobody#"});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
  EXPECT_STREQ(share->write_list, "#bob#");
}

TEST(CatalogueCheck, ValidUsersAreNotTouched) {
  smb_share *share = list_share("Music", {"#alice#,#dave#", "", ""});
  put(share->valid_users, "#alice#,#dave#");
  check_user_group();
  EXPECT_STREQ(share->valid_users, "#alice#,#dave#");
}

TEST(CatalogueCheck, SharesThatNobodyCanReachAnyMoreAreRemoved) {
  list_share("Gone", {"#dave#", "#@sales#", "#nobody#"});
  list_share("AlsoGone", {"#dave#", "", "#eve#"});
  list_share("Stays", {"#alice#", "", "#nobody#"});
  check_user_group();
  EXPECT_EQ(listed_shares(), Names{"Stays"});
}

TEST(CatalogueCheck, InADomainNothingChanges) {
  pss->ads_enable = 1;
  const smb_share *share = list_share("Music", {"#dave#", everyone, "#@sales#"});
  list_share("Empty", {"", "", "#nobody#"});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#dave#");
  EXPECT_STREQ(share->invalid_users, "#@sales#");
  EXPECT_EQ(listed_shares(), (Names{"Music", "Empty"}));
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(CatalogueCheck, EveryModeButOneIsLocal) {
  pss->ads_enable = 2;
  const smb_share *share = list_share("Music", {"#alice#,#dave#", "", ""});
  check_user_group();
  EXPECT_STREQ(share->read_list, "#alice#");
}

TEST(CatalogueCheck, AnEmptyCatalogueStaysEmpty) {
  check_user_group();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(CatalogueCheck, PrintsTheComparedTokensForAnyDebugFlagButZero) {
  const auto check = [] {
    Free_All_List();
    list_share("Music", {"#alice#,#dave#,#@staff#", everyone, "#bob#"});
    check_user_group();
  };
  expect_listing(check, " read from LIST = alice\n"
                        " read from LIST = @staff\n");
}

} // namespace
} // namespace nasshare::tests
