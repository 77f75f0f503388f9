// Access lists against the accounts that winbind lists.
#include "../acl/access_lists.h"
#include "../support/descriptor_limit.h"
#include "domain_settings.h"
#include "nasshare/ads.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

// wbinfo with these users and groups.
void list_accounts(const std::string &users, const std::string &groups = "") {
  Appliance{}
      .file("/tmp/users", users)
      .file("/tmp/groups", groups)
      .script("wbinfo", "case $1 in -u) cat /tmp/users ;; -g) cat /tmp/groups ;; *) exit 1 ;; esac");
  in_a_domain();
}

std::string numbered_lines(int count) {
  std::string lines;
  for (int i = 1; i <= count; ++i) {
    lines += "name" + std::to_string(i) + "\n";
  }
  return lines;
}

std::string checked(std::string_view text) {
  AccessList list(text);
  ads_run_check_samba_list(list);
  return list.text();
}

struct Row {
  const char *given;
  const char *kept;
};

// ---- One user, one group

TEST(DomainUser, IsAWholeLineOfWbinfo) {
  list_accounts("guest\nbob\nalice\nmary ann\n", "alice\n");
  for (const char *name : {"guest", "bob", "alice", "mary ann"}) {
    EXPECT_EQ(ads_check_user(name), 1) << name;
  }
  for (const char *name :
       {"ali", "alice2", "lice", "mary", "Alice", "ALICE", "CORP+alice", " alice", "carol", ""}) {
    EXPECT_EQ(ads_check_user(name), 0) << name;
  }
}

TEST(DomainUser, IsAskedForWithOneRunOfItsCommand) {
  list_accounts("alice\n");
  EXPECT_EQ(ads_check_user("alice"), 1);
  EXPECT_EQ(transcript(), "wbinfo -u\n");
}

TEST(DomainGroup, IsAWholeLineOfWbinfo) {
  list_accounts("alice\n", "staff\ndomain users\n");
  EXPECT_EQ(ads_check_group("staff"), 1);
  EXPECT_EQ(ads_check_group("domain users"), 1);
  for (const char *name : {"@staff", "Staff", "Domain Users", "domain", "alice", ""}) {
    EXPECT_EQ(ads_check_group(name), 0) << name;
  }
}

TEST(DomainGroup, IsAskedForWithOneRunOfItsCommand) {
  list_accounts("", "staff\n");
  EXPECT_EQ(ads_check_group("staff"), 1);
  EXPECT_EQ(transcript(), "wbinfo -g\n");
}

TEST(DomainAccount, WithoutANameIsUnknown) {
  list_accounts("alice\n", "staff\n");
  EXPECT_EQ(ads_check_user(nullptr), 0);
  EXPECT_EQ(ads_check_group(nullptr), 0);
}

TEST(DomainAccount, LineEndsDoNotCount) {
  list_accounts("alice\r\nbob \t\ncarol", "staff\r\n");
  EXPECT_EQ(ads_check_user("alice"), 1);
  EXPECT_EQ(ads_check_user("bob"), 1);
  EXPECT_EQ(ads_check_user("carol"), 1);
  EXPECT_EQ(ads_check_group("staff"), 1);
}

TEST(DomainAccount, OfOtherLettersIsCompareByteForByte) {
  list_accounts("m\u00fcller\n", "\u97f3\u697d\n");
  EXPECT_EQ(ads_check_user("m\u00fcller"), 1);
  EXPECT_EQ(ads_check_user("M\u00dcLLER"), 0);
  EXPECT_EQ(ads_check_group("\u97f3\u697d"), 1);
}

TEST(DomainAccount, IsUnknownWhenWinbindDoesNotAnswer) {
  Appliance{}.command("wbinfo", recording("domain/wbinfo-u-no-winbindd.stdout"), 1,
                      recording("domain/wbinfo-u-no-winbindd.stderr"));
  in_a_domain();
  const Captured captured;
  EXPECT_EQ(ads_check_user("alice"), 0);
  EXPECT_EQ(ads_check_group("staff"), 0);
}

TEST(DomainAccount, IsUnknownWhenTheCommandCannotBeStarted) {
  list_accounts("alice\n", "staff\n");
  const DescriptorLimit none(0);
  EXPECT_EQ(ads_check_user("alice"), 0);
  EXPECT_EQ(ads_check_group("staff"), 0);
}

TEST(DomainAccount, TheExitStatusDoesNotCount) {
  Appliance{}.command("wbinfo", "alice\n", 1);
  in_a_domain();
  EXPECT_EQ(ads_check_user("alice"), 1);
}

TEST(DomainUser, TheTicketServiceIsNone) {
  list_accounts("krbtgt\nkrbtgt2\n", "krbtgt\n");
  EXPECT_EQ(ads_check_user("krbtgt"), 0);
  EXPECT_EQ(ads_check_user("krbtgt2"), 1);
  EXPECT_EQ(ads_check_group("krbtgt"), 1);
}

TEST(DomainAccount, TheApplianceItselfIsNoneInAnyLetterCase) {
  list_accounts("TARVO-A1B2$\ntarvo-a1b2\nTarvo-a1b2 user\ntarvo-a1b\n", "tarvo-A1B2 group\ntarvo\n");
  for (const char *name : {"TARVO-A1B2$", "tarvo-a1b2", "Tarvo-a1b2 user"}) {
    EXPECT_EQ(ads_check_user(name), 0) << name;
  }
  EXPECT_EQ(ads_check_user("tarvo-a1b"), 1);
  EXPECT_EQ(ads_check_group("tarvo-A1B2 group"), 0);
  EXPECT_EQ(ads_check_group("tarvo"), 1);
}

TEST(DomainAccount, AnApplianceWithoutANamePassesOverNobody) {
  list_accounts("alice\n", "staff\n");
  set(smbshare.netbios_name, "");
  EXPECT_EQ(ads_check_user("alice"), 1);
  EXPECT_EQ(ads_check_group("staff"), 1);
}

// ---- The bounds of the search

TEST(DomainUser, IsSearchedAmongTheFirst800Lines) {
  list_accounts(numbered_lines(801));
  EXPECT_EQ(ads_check_user("name1"), 1);
  EXPECT_EQ(ads_check_user("name800"), 1);
  EXPECT_EQ(ads_check_user("name801"), 0);
}

TEST(DomainGroup, IsSearchedAmongTheFirst200Lines) {
  list_accounts("", numbered_lines(201));
  EXPECT_EQ(ads_check_group("name200"), 1);
  EXPECT_EQ(ads_check_group("name201"), 0);
}

TEST(DomainUser, LinesThatArePassedOverDoNotCount) {
  list_accounts("krbtgt\nTARVO-A1B2$\n" + numbered_lines(801));
  EXPECT_EQ(ads_check_user("name800"), 1);
  EXPECT_EQ(ads_check_user("name801"), 0);
}

TEST(DomainGroup, TheTicketServiceCountsAmongGroups) {
  list_accounts("", "krbtgt\nTARVO-A1B2 group\n" + numbered_lines(200));
  EXPECT_EQ(ads_check_group("name199"), 1);
  EXPECT_EQ(ads_check_group("name200"), 0);
}

TEST(DomainUser, EmptyLinesCount) {
  list_accounts("\n\r\n" + numbered_lines(799));
  EXPECT_EQ(ads_check_user("name798"), 1);
  EXPECT_EQ(ads_check_user("name799"), 0);
}

// Of more than 511 characters: the pieces count one by one.
TEST(DomainUser, OfALongLineEveryPieceIsALine) {
  const std::string whole(510, 'u');
  list_accounts(whole + "\n" + std::string(511, 'v') + "tail\n" + numbered_lines(798));
  EXPECT_EQ(ads_check_user(whole.c_str()), 1);
  EXPECT_EQ(ads_check_user("tail"), 1);
  EXPECT_EQ(ads_check_user("name797"), 1);
  EXPECT_EQ(ads_check_user("name798"), 0);
}

TEST(DomainUser, TheCommandIsReadToItsEnd) {
  Appliance{}.script("wbinfo",
                     "echo alice; head -c 1000000 /dev/zero | tr '\\0' '\\n'; echo finished >/tmp/end");
  in_a_domain();
  EXPECT_EQ(ads_check_user("alice"), 1);
  EXPECT_EQ(read_file("/tmp/end"), "finished\n");
}

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

std::string lists_of(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  if (share == nullptr) {
    return "no share";
  }
  return std::string(share->read_list) + "|" + share->write_list + "|" + share->invalid_users;
}

void insert(const Share &share) {
  ASSERT_NE(Insert_Smb_Node(share), nullptr);
}

TEST(DomainCheck, GoesThroughTheThreeListsOfEveryShare) {
  list_accounts("alice\nbob\n", "staff\n");
  insert(Share{"Music"}.read("#bob#,#ghost#").write("#alice#").deny("#ghost#,#bob#"));
  insert(Share{"Docs"}.read("#@staff#,#@ghosts#").write("#ghost#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), "#bob#|#alice#|#bob#");
  EXPECT_EQ(lists_of("Docs"), "#@staff#||#nobody#");
  EXPECT_EQ(smbshare.count, 2);
}

TEST(DomainCheck, TakesReadersWritersAndDeniedInOrder) {
  list_accounts("r\nw\nd\n", "r\nw\nd\n");
  insert(Share{"Music"}.read("#r#").write("#@w#").deny("#d#,#r#"));
  set(smbshare.head->invalid_users, "#d#"); // without the guest that the list rule adds
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
  EXPECT_EQ(lists_of("Ghosts"), "no share");
  EXPECT_EQ(lists_of("Others"), "no share");
  EXPECT_EQ(lists_of("Music"), "|#alice#|#nobody#");
  EXPECT_EQ(smbshare.count, 1);
}

TEST(DomainCheck, KeepsAShareThatDeniesSomebodyKnown) {
  list_accounts("alice\n");
  insert(Share{"Music"}.read("#ghost#").deny("#alice#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), "||#alice#");
}

TEST(DomainCheck, KeepsAShareForEveryone) {
  list_accounts("alice\n");
  insert(Share{"Public"}.everyone());
  ads_check_user_group();
  EXPECT_EQ(lists_of("Public"), "|#nobody#,#@allaccount#|");
}

TEST(DomainCheck, OfAnEmptyShareListAsksNobody) {
  list_accounts("alice\n");
  ads_check_user_group();
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(smbshare.count, 0);
}

TEST(DomainCheck, WithTodaysToolsKeepsLowerCaseNames) {
  Appliance{}
      .file("/tmp/users", recording("domain/wbinfo-u.stdout"))
      .file("/tmp/groups", recording("domain/wbinfo-g.stdout"))
      .script("wbinfo", "case $1 in -u) cat /tmp/users ;; -g) cat /tmp/groups ;; esac");
  in_a_domain();
  insert(Share{"Music"}.read("#@domain users#,#@Domain Users#").write("#alice#,#Alice#,#krbtgt#"));
  ads_check_user_group();
  EXPECT_EQ(lists_of("Music"), "#@domain users#|#alice#|#nobody#");
}

TEST(DomainCheck, PrintsNothing) {
  list_accounts("alice\n");
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = 0;
    insert(Share{"Music"}.write("#alice#,#ghost#"));
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { ads_check_user_group(); }), "");
    Free_All_List();
  }
}

} // namespace
} // namespace nasshare::tests
