// ads_check_user and ads_check_group: whether winbind lists a user or a group.
#include "appliance.h"
#include "domain.h"
#include "domain_accounts.h"
#include "fields.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string numbered_lines(int count) {
  std::string lines;
  for (int i = 1; i <= count; ++i) {
    lines += "name" + std::to_string(i) + "\n";
  }
  return lines;
}

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
  put(smbshare.netbios_name, "");
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

} // namespace
} // namespace nasshare::tests
