// Access lists, and those of the listed shares, against the accounts that winbind lists.
#include "appliance.h"
#include "debug_output.h"
#include "domain_accounts.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/ads.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string checked(std::string_view text) {
  AccessList list(text);
  ads_run_check_samba_list(list);
  return list.text();
}

struct Row {
  const char *given;
  const char *kept;
};

// ---- Access lists

TEST(DomainList, KeepsWhatTheDomainLists) {
  list_accounts("alice\nbob\nmary ann\n", "staff\ndomain users\n");
  constexpr Row rows[] = {
      {"#alice#", "#alice#"},
      {"#alice#,#ghost#", "#alice#"},
      {"#ghost#,#alice#", "#alice#"},
      {"#bob#,#@staff#,#alice#", "#bob#,#@staff#,#alice#"},
      {"#mary ann#,#@domain users#", "#mary ann#,#@domain users#"},
      {"#Alice#,#bob#", "#bob#"},
      {"#@Staff#,#bob#", "#bob#"},
      {"#@alice#,#staff#", ""},
      {"#ghost#", ""},
      {"#@#,#alice#", "#alice#"},
      {"#alice#,#alice#", "#alice#,#alice#"},
      {"alice,bob", "#alice#,#bob#"},
      {"#,#", ""},
      {",", ""},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(row.given);
    EXPECT_EQ(checked(row.given), row.kept);
  }
}

TEST(DomainList, OfTheEveryoneValueOrTheGuestAloneStaysAndAsksNobody) {
  list_accounts("");
  for (const char *list : {"", "#nobody#,#@allaccount#", "#nobody#"}) {
    SCOPED_TRACE(list);
    EXPECT_EQ(checked(list), list);
  }
  EXPECT_EQ(transcript(), "");
}

TEST(DomainList, DropsTheGuestAndLocalGroupsInALongerList) {
  list_accounts("alice\n", "domain users\n");
  constexpr Row rows[] = {
      {"#nobody#,#alice#", "#alice#"},
      {"#alice#,#@allaccount#", "#alice#"},
      {"#nobody#,#@allaccount#,#alice#", "#alice#"},
      {"#@allaccount#", ""},
      {"#nobody#,#@Domain Users#", ""},
      {"#nobody#,#@domain users#", "#@domain users#"},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(row.given);
    EXPECT_EQ(checked(row.given), row.kept);
  }
}

TEST(DomainList, LocalAccountsDoNotCount) {
  list_accounts("dora\n", "engineers\n");
  EXPECT_EQ(checked("#alice#,#@staff#,#dora#,#@engineers#"), "#dora#,#@engineers#");
}

TEST(DomainList, AsksAnewForEveryEntry) {
  list_accounts("alice\n", "staff\n");
  checked("#alice#,#@staff#,#alice#");
  EXPECT_EQ(transcript(), "wbinfo -u\nwbinfo -g\nwbinfo -u\n");
}

TEST(DomainList, ThatFillsItsFieldStaysInIt) {
  std::string users;
  for (int i = 0; i < 700; ++i) {
    users += "user-of-the-domain-" + std::to_string(1000000 + i) + "\n";
  }
  list_accounts(users);
  const std::string entry = "#" + std::string(6140, 'x') + "#";
  EXPECT_EQ(checked(entry + ",#user-of-the-domain-1000000#," + std::string(6000, 'y')),
            "#user-of-the-domain-1000000#");
}

TEST(DomainList, OneCharacterIsAnEntryToo) {
  list_accounts("a\n", "");
  EXPECT_EQ(checked("#a#"), "#a#");
  EXPECT_EQ(checked("#a#,#b#"), "#a#");
}

// A list without any name is an empty name, which an empty line of wbinfo lists; three characters are too few
// to lose the comma.
TEST(DomainList, OfDelimitersOnlyIsAnEmptyName) {
  list_accounts("\nalice\n");
  EXPECT_EQ(checked("#,#"), "##,");
}

TEST(DomainList, LeavesTheCallersTokensAlone) {
  list_accounts("alice\n");
  char text[] = "#one#,#two#";
  ASSERT_STREQ(smb_strtok(text, "#,"), "one");
  EXPECT_EQ(checked("#alice#,#ghost#"), "#alice#");
  EXPECT_STREQ(smb_strtok(nullptr, "#,"), "two");
}

TEST(DomainList, WithoutAListNothingHappens) {
  list_accounts("alice\n");
  ads_run_check_samba_list(nullptr);
  EXPECT_EQ(transcript(), "");
}

// ---- The share list

void insert(const Share &share) {
  ASSERT_NE(Insert_Smb_Node(share), nullptr);
}

TEST(DomainCheck, GoesThroughTheThreeListsOfEveryShare) {
  list_accounts("alice\nbob\n", "staff\n");
  insert(Share{"Music"}.read("#bob#,#ghost#").write("#alice#").deny("#ghost#,#bob#"));
  insert(Share{"Docs"}.read("#@staff#,#@ghosts#").write("#ghost#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), (Lists{"#bob#", "#alice#", "#bob#"}));
  EXPECT_EQ(lists_of("Docs"), (Lists{"#@staff#", "", "#nobody#"}));
  EXPECT_EQ(smbshare.count, 2);
}

TEST(DomainCheck, TakesReadersWritersAndDeniedInOrder) {
  list_accounts("r\nw\nd\n", "r\nw\nd\n");
  insert(Share{"Music"}.read("#r#").write("#@w#").deny("#d#,#r#"));
  put(smbshare.head->invalid_users, "#d#"); // without the guest that the list rule adds
  ads_check_user_group();
  EXPECT_EQ(transcript(), "wbinfo -u\nwbinfo -g\nwbinfo -u\n");
}

TEST(DomainCheck, LeavesTheValidUsersAsTheyWere) {
  list_accounts("alice\n");
  insert(Share{"Music"}.write("#alice#,#ghost#"));
  const std::string valid = smbshare.head->valid_users;
  ads_check_user_group();
  EXPECT_EQ(smbshare.head->valid_users, valid);
  EXPECT_NE(valid.find("ghost"), std::string::npos);
}

TEST(DomainCheck, RemovesAShareWhoseEveryEntryIsDropped) {
  list_accounts("alice\n");
  insert(Share{"Ghosts"}.read("#ghost#").write("#@ghosts#"));
  insert(Share{"Music"}.write("#alice#"));
  insert(Share{"Others"}.write("#other#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Ghosts"), no_such_share());
  EXPECT_EQ(lists_of("Others"), no_such_share());
  EXPECT_EQ(lists_of("Music"), (Lists{"", "#alice#", "#nobody#"}));
  EXPECT_EQ(smbshare.count, 1);
}

TEST(DomainCheck, KeepsAShareThatDeniesSomebodyKnown) {
  list_accounts("alice\n");
  insert(Share{"Music"}.read("#ghost#").deny("#alice#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), (Lists{"", "", "#alice#"}));
}

TEST(DomainCheck, KeepsAShareForEveryone) {
  list_accounts("alice\n");
  insert(Share{"Public"}.everyone());
  ads_check_user_group();
  EXPECT_EQ(lists_of("Public"), (Lists{"", "#nobody#,#@allaccount#", ""}));
}

TEST(DomainCheck, OfAnEmptyShareListAsksNobody) {
  list_accounts("alice\n");
  ads_check_user_group();
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(smbshare.count, 0);
}

TEST(DomainCheck, WithTodaysToolsKeepsLowerCaseNames) {
  list_accounts(recording("domain/wbinfo-u.stdout"), recording("domain/wbinfo-g.stdout"));
  insert(Share{"Music"}.read("#@domain users#,#@Domain Users#").write("#alice#,#Alice#,#krbtgt#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), (Lists{"#@domain users#", "#alice#", "#nobody#"}));
}

TEST(DomainCheck, PrintsNothing) {
  list_accounts("alice\n");
  expect_silence([] {
    insert(Share{"Music"}.write("#alice#,#ghost#"));
    ads_check_user_group();
    Free_All_List();
  });
}

} // namespace
} // namespace nasshare::tests
