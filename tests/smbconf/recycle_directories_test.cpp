// A recycle root and one directory per user, open to all and owned by its user.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "smb_conf.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

const std::string root = "/mnt/HD/HD_a2/recycle";

struct Directory {
  mode_t type_and_mode;
  uid_t user;
  gid_t group;
  bool operator==(const Directory &) const = default;
};

Directory directory(const std::string &name) {
  struct stat status {};
  EXPECT_EQ(stat((root + name).c_str(), &status), 0) << name;
  return {status.st_mode, status.st_uid, status.st_gid};
}

Directory open_to_all(uid_t user, gid_t group) {
  return {S_IFDIR | 0777U, user, group};
}

void make() {
  create_recycle_user_directory(root.c_str());
}

Names made_for(const std::string &listing) {
  Appliance{}.command("wbinfo", listing);
  in_the_domain();
  make();
  return names_in(root);
}

class RecycleDirectories : public testing::Test {
protected:
  RecycleDirectories() { Appliance{}.folder("/mnt/HD/HD_a2"); }
};
using DomainRecycleDirectories = RecycleDirectories;

// ---- In either mode

// Whoever may write in a volume's root may plant a link there.
TEST_F(RecycleDirectories, ARootThatIsALinkIsNotFollowed) {
  Appliance{}.folder("/etc/victim").link("/etc/victim", root);
  make();
  EXPECT_EQ(names_in("/etc/victim"), Names{});
}

// ---- Outside a domain

TEST_F(RecycleDirectories, EveryLocalAccountHasOne) {
  make();
  EXPECT_EQ(names_in(root), (Names{"alice", "bob", "carol", "nobody"}));
  EXPECT_EQ(directory(""), open_to_all(0, 0));
  EXPECT_EQ(directory("/alice"), open_to_all(1000, 500));
  EXPECT_EQ(directory("/carol"), open_to_all(1002, 500));
  EXPECT_EQ(directory("/nobody"), open_to_all(65534, 65534));
}

TEST_F(RecycleDirectories, SomeAccountsOfTheSystemHaveNone) {
  Appliance appliance;
  for (const char *name : {"admin", "ftp", "sshd", "squeezecenter", "daemon", "Admin", "ftp2"}) {
    appliance.user(name, 700, 701);
  }
  make();
  EXPECT_EQ(names_in(root), (Names{"Admin", "alice", "bob", "carol", "daemon", "ftp2", "nobody"}));
  EXPECT_EQ(directory("/daemon"), open_to_all(700, 701));
}

TEST_F(RecycleDirectories, TheUmaskDoesNotNarrowThem) {
  const mode_t before = umask(0077);
  make();
  umask(before);
  EXPECT_EQ(directory(""), open_to_all(0, 0));
  EXPECT_EQ(directory("/alice"), open_to_all(1000, 500));
}

TEST_F(RecycleDirectories, ASecondCallChangesNothing) {
  make();
  ASSERT_EQ(chown((root + "/alice").c_str(), 7, 8), 0);
  ASSERT_EQ(chmod((root + "/alice").c_str(), 0700), 0);
  ASSERT_EQ(chown(root.c_str(), 9, 10), 0);
  ASSERT_EQ(chmod(root.c_str(), 0711), 0);
  make();
  EXPECT_EQ(directory("/alice"), (Directory{S_IFDIR | 0700U, 7, 8}));
  EXPECT_EQ(directory(""), (Directory{S_IFDIR | 0711U, 9, 10}));
  EXPECT_EQ(names_in(root), (Names{"alice", "bob", "carol", "nobody"}));
}

TEST_F(RecycleDirectories, ANewAccountGetsItsOwnLater) {
  make();
  Appliance{}.user("dave", 1003, 500);
  make();
  EXPECT_EQ(names_in(root), (Names{"alice", "bob", "carol", "dave", "nobody"}));
}

TEST_F(RecycleDirectories, WhatStandsInTheWayStays) {
  Appliance{}.file(root + "/alice", "a file", 0640);
  make();
  EXPECT_EQ(read_file(root + "/alice"), "a file");
  EXPECT_EQ(mode(root + "/alice"), 0640U);
  EXPECT_EQ(owner(root + "/alice"), 0U);
  EXPECT_EQ(directory("/bob"), open_to_all(1001, 500));
}

TEST_F(RecycleDirectories, ARootThatCannotBeMadeGivesNone) {
  Appliance{}.remove("/mnt/HD/HD_a2");
  make();
  EXPECT_FALSE(exists("/mnt/HD/HD_a2"));
}

TEST_F(RecycleDirectories, EveryModeButOneIsOutsideADomain) {
  Appliance{}.command("wbinfo", "dave 10000 10000\n");
  in_the_domain();
  pss->ads_enable = 2;
  make();
  EXPECT_EQ(names_in(root), (Names{"alice", "bob", "carol", "nobody"}));
  EXPECT_EQ(transcript(), "");
}

TEST_F(RecycleDirectories, AnAccountNameThatDoesNotFitHasNone) {
  Appliance{}.user(std::string(300, 'x'), 800, 800).user(std::string(255, 'y'), 801, 801);
  make();
  EXPECT_EQ(names_in(root), (Names{"alice", "bob", "carol", "nobody", std::string(255, 'y')}));
}

TEST_F(RecycleDirectories, OfNoRootAreNone) {
  create_recycle_user_directory(nullptr);
  create_recycle_user_directory("");
  EXPECT_EQ(names_in("/mnt/HD/HD_a2"), Names{});
  EXPECT_FALSE(exists("/alice"));
  create_recycle_user_directory((root + std::string(5000, 'x')).c_str());
  EXPECT_EQ(names_in("/mnt/HD/HD_a2"), Names{});
}

TEST_F(RecycleDirectories, NothingIsPrinted) {
  expect_silence(make);
}

// ---- In a domain

TEST_F(DomainRecycleDirectories, EveryListedUserHasOneBesideTheGuest) {
  EXPECT_EQ(made_for("dave 10000 10000\neve 10001 10002\n"), (Names{"CORP+dave", "CORP+eve", "nobody"}));
  EXPECT_EQ(directory(""), open_to_all(0, 0));
  EXPECT_EQ(directory("/nobody"), open_to_all(501, 501));
  EXPECT_EQ(directory("/CORP+dave"), open_to_all(10000, 10000));
  EXPECT_EQ(directory("/CORP+eve"), open_to_all(10001, 10002));
  EXPECT_EQ(transcript(), "wbinfo -z\n");
}

TEST_F(DomainRecycleDirectories, IdsBelowTheDomainsHaveNone) {
  EXPECT_EQ(made_for("a 9999 10000\nb 10000 9999\nc 9999 9999\nd 0 0\ne -1 -1\nf 10000 10000\n"),
            (Names{"CORP+f", "nobody"}));
}

TEST_F(DomainRecycleDirectories, TheCommandsErrorAndTheTicketServiceAreSkipped) {
  EXPECT_EQ(made_for("Error looking up domain users\n"
                     "x 10000 10000 Error looking up domain users\n"
                     "krbtgt\n"
                     "dave 10000 10000\n"),
            (Names{"CORP+dave", "nobody"}));
}

TEST_F(DomainRecycleDirectories, TheTicketServiceIsSkippedOnlyAsAWholeLine) {
  EXPECT_EQ(made_for("krbtgt 10000 10000\nkrbtgt2 10001 10001\n"),
            (Names{"CORP+krbtgt", "CORP+krbtgt2", "nobody"}));
}

TEST_F(DomainRecycleDirectories, TheAppliancesOwnAccountIsSkippedInAnyLetterCase) {
  EXPECT_EQ(made_for("tarvo$ 10000 10000\nTarVo 10001 10001\nTARVOS 10002 10002\n"
                     "tarv 10003 10003\nxtarvo 10004 10004\n"),
            (Names{"CORP+tarv", "CORP+xtarvo", "nobody"}));
}

TEST_F(DomainRecycleDirectories, WithoutANameOfItsOwnTheApplianceSkipsNobody) {
  Appliance{}.command("wbinfo", "dave 10000 10000\n");
  in_the_domain();
  pss->netbios_name[0] = '\0';
  make();
  EXPECT_EQ(names_in(root), (Names{"CORP+dave", "nobody"}));
}

TEST_F(DomainRecycleDirectories, LinesThatLackAFieldAreSkipped) {
  EXPECT_EQ(made_for("\n"
                     "a\n"
                     "b 10000\n"
                     "c x 10000\n"
                     "d 10000 y\n"
                     "john doe 10000 10000\n"
                     "e 99999999999 10000\n"
                     "f 10000 99999999999\n"
                     "  g\t10000   10000  and more\r\n"
                     "h 10000 10000x\n"
                     "i 10000 10000"),
            (Names{"CORP+g", "CORP+h", "CORP+i", "nobody"}));
}

TEST_F(DomainRecycleDirectories, ASecondCallChangesNothing) {
  EXPECT_EQ(made_for("dave 10000 10000\n"), (Names{"CORP+dave", "nobody"}));
  ASSERT_EQ(chown((root + "/nobody").c_str(), 7, 7), 0);
  ASSERT_EQ(chmod((root + "/CORP+dave").c_str(), 0700), 0);
  EXPECT_EQ(made_for("dave 20000 20000\n"), (Names{"CORP+dave", "nobody"}));
  EXPECT_EQ(directory("/nobody"), open_to_all(7, 7));
  EXPECT_EQ(directory("/CORP+dave"), (Directory{S_IFDIR | 0700U, 10000, 10000}));
}

TEST_F(DomainRecycleDirectories, WithoutTheCommandTheRootAndTheGuestAreMade) {
  Appliance{}.no_command("wbinfo");
  in_the_domain();
  make();
  EXPECT_EQ(names_in(root), Names{"nobody"});
}

TEST_F(DomainRecycleDirectories, ACommandThatKnowsNoSuchOptionGivesTheRootAndTheGuest) {
  Appliance{}.command("wbinfo", recording("domain/wbinfo-z.stdout"), 1, recording("domain/wbinfo-z.stderr"));
  in_the_domain();
  make();
  EXPECT_EQ(names_in(root), Names{"nobody"});
}

TEST_F(DomainRecycleDirectories, LocalAccountsHaveNone) {
  EXPECT_EQ(made_for(""), Names{"nobody"});
}

TEST_F(DomainRecycleDirectories, ALongLineComesInPieces) {
  const std::string name(200, 'n');
  const std::string filling(512 - 201 - 12 - 1, ' ');
  // 511 bytes of the first line make one piece; what is left of it is read as a line of its own.
  const std::string first = name + " 10000 10000" + filling;
  ASSERT_EQ(first.size(), 510U);
  EXPECT_EQ(made_for(first + " dave 10001 10001\n" + std::string(5000, 'x') + "\neve 10002 10002\n"),
            (Names{"CORP+dave", "CORP+eve", "CORP+" + name, "nobody"}));
}

TEST_F(DomainRecycleDirectories, ANameThatDoesNotFitHasNone) {
  EXPECT_EQ(made_for(std::string(251, 'x') + " 10000 10000\n" + std::string(250, 'y') + " 10001 10001\n"),
            (Names{"CORP+" + std::string(250, 'y'), "nobody"}));
}

TEST_F(DomainRecycleDirectories, NothingIsPrinted) {
  Appliance{}.command("wbinfo", "dave 10000 10000\n");
  in_the_domain();
  expect_silence(make);
}

} // namespace
} // namespace nasshare::tests
