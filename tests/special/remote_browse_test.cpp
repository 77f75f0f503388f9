// The disk shares that another host lists.
#include "appliance.h"
#include "debug_output.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/special.h"
#include "output.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>

namespace nasshare::tests {
namespace {

namespace fs = std::filesystem;

constexpr const char *smbclient = "/usr/bin/smbclient";
constexpr const char *calls_of_smbclient = "/run/appliance/smbclient-calls_of_smbclient";
constexpr const char *answer = "/run/appliance/smbclient-answer";

void without_smbclient() {
  Appliance{}.no_program(smbclient);
}

// A smbclient that notes its arguments, a line each, and prints that text on both streams' common end.
void answers(const std::string &out, const std::string &err = "") {
  Appliance{}
      .file(answer, out)
      .file(std::string(answer) + "-error", err)
      .program(smbclient, "printf '[%s]\\n' \"$@\" >>" + std::string(calls_of_smbclient) + "\ncat " + answer +
                              "\ncat " + answer + "-error >&2\nexit 1");
}

// The names after a listing that ran to its end.
Names names_in_listing(const std::string &text) {
  answers(text);
  EXPECT_EQ(get_host_share_name("attic"), 1);
  return listed_names();
}

// Whether the listing counts as a failed connection; the name list is empty then.
bool has_failed(const std::string &text) {
  answers(text);
  const int result = get_host_share_name("attic");
  EXPECT_TRUE(result == 1 || listed_names().empty());
  return result == 0;
}

// ---- What a real smbclient prints

TEST(RemoteBrowse, ListsTheSharesOfAStandaloneHost) {
  EXPECT_EQ(names_in_listing(recording("samba/smbclient-gNL-local.stdout")),
            (Names{"Volume_1", "Public", "Music", "Docs", "Flat", "Deny", "Onlydeny", "USBDisk2", "My Docs",
                   "R&B", "M\xC3\xBCsik", "Recycle Bin - Volume_1", "DFS"}));
}

TEST(RemoteBrowse, ListsTheSharesOfADomainMemberBetweenTheWarnings) {
  EXPECT_EQ(names_in_listing(recording("samba/smbclient-gNL-domain.stdout")),
            (Names{" Volume_1 ", " music ", " team ", " ghosts ", " Recycle Bin - Volume_1 ", " DFS "}));
}

TEST(RemoteBrowse, AHostThatRefusesIsAFailure) {
  EXPECT_TRUE(has_failed(recording("samba/smbclient-gNL-refused.stdout")));
}

TEST(RemoteBrowse, AnUnknownHostIsAFailure) {
  EXPECT_TRUE(has_failed(recording("samba/smbclient-gNL-unknown-host.stdout")));
}

// ---- How it is asked

TEST(RemoteBrowse, AsksForAListingWithoutAPassword) {
  answers("");
  EXPECT_EQ(get_host_share_name("192.168.0.32"), 1);
  EXPECT_EQ(read_file(calls_of_smbclient), "[-gNL]\n[192.168.0.32]\n");
}

TEST(RemoteBrowse, TheHostIsOneArgument) {
  answers("");
  EXPECT_EQ(get_host_share_name("the attic; 'upstairs' & more *"), 1);
  EXPECT_EQ(read_file(calls_of_smbclient), "[-gNL]\n[the attic; 'upstairs' & more *]\n");
}

TEST(RemoteBrowse, StandardErrorIsReadToo) {
  answers("Disk|music|\n", "Disk|films|\n");
  Captured captured;
  EXPECT_EQ(get_host_share_name("attic"), 1);
  EXPECT_EQ(captured.err(), "");
  EXPECT_EQ(listed_names(), (Names{"music", "films"}));
  answers("Disk|music|\n", "Connection to attic failed\n");
  EXPECT_EQ(get_host_share_name("attic"), 0);
}

TEST(RemoteBrowse, ASmbclientElsewhereOnThePathIsNotAsked) {
  without_smbclient();
  Appliance{}.command("smbclient", "Disk|music|\n");
  EXPECT_EQ(get_host_share_name("attic"), 0);
  EXPECT_EQ(transcript(), "");
}

// Between double quotes these still mean something to the shell.
TEST(RemoteBrowse, AHostThatWouldLeaveItsQuotesIsNotAskedAtAll) {
  answers("Disk|music|\n");
  Insert_Name_Node("before");
  for (const char *host : {"x\"; echo 'Disk|pwned|' #", "$(id)", "`id`", "a\\", "a\nb", "a\rb"}) {
    SCOPED_TRACE(testing::PrintToString(host));
    EXPECT_EQ(get_host_share_name(host), 0);
    EXPECT_FALSE(exists(calls_of_smbclient));
  }
  EXPECT_NE(Check_Name_Node("before"), nullptr) << "the list is left alone";
}

TEST(RemoteBrowse, AHostThatStandsInTheNameListIsAsked) {
  answers("Disk|music|\n");
  EXPECT_EQ(get_host_share_name(Insert_Name_Node("attic")->name), 1);
  EXPECT_EQ(read_file(calls_of_smbclient), "[-gNL]\n[attic]\n");
}

// Half a host's name may be another host's.
TEST(RemoteBrowse, AHostTooLongForACommandIsNotAskedAtAll) {
  answers("Disk|music|\n");
  for (std::size_t length = 8100; length < 8200; ++length) {
    const std::string host = std::string(length, 'h') + "\xC3\xA4";
    Captured captured;
    const int result = get_host_share_name(host.c_str());
    EXPECT_EQ(captured.err(), "");
    EXPECT_TRUE(result == 0 || read_file(calls_of_smbclient) == "[-gNL]\n[" + host + "]\n") << length;
    EXPECT_TRUE(result == 1 || !exists(calls_of_smbclient)) << length;
    Appliance{}.remove(calls_of_smbclient);
  }
}

// ---- Which lines are shares

TEST(RemoteBrowse, HiddenSharesPrintersAndThePageAreNoShares) {
  EXPECT_EQ(names_in_listing("Disk|IPC$|IPC Service\nDisk|music|\nDisk|printer_spool|\nDisk|web_page|\n"),
            Names{"music"});
}

TEST(RemoteBrowse, ALineGivesTheTextBehindTheFifthCharacter) {
  const struct {
    const char *line;
    Names names;
  } rows[] = {
      {"Disk|music|My music", {"music"}},
      {"Disk|music|", {"music"}},
      {"Disk|music", {"music"}},
      {"Disk|my music|a|b|c", {"my music"}},
      {"Disk||no name", {""}},
      {"Disk|", {""}},
      {"Disk", {}},
      {"disk|music|", {}},
      {"DISK|music|", {}},
      {"Disk music", {}},
      {"IPC|IPC$|IPC Service", {}},
      {"Printer|laser|Disk", {}},
      {"Server|ATTIC|", {}},
      {"Workgroup|WORKGROUP|ATTIC", {}},
      {"", {}},
      {"   ", {}},
      {" Disk|music|", {""}},
      {"FloppyDisk|music|", {"yDisk"}},
      {"Printer|laser|on Disk|", {"er"}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(names_in_listing(std::string(row.line) + "\n"), row.names);
  }
}

TEST(RemoteBrowse, NamesThatAreLeftOut) {
  const struct {
    const char *line;
    Names names;
  } rows[] = {
      {"Disk|C$|", {}},
      {"Disk|$|", {}},
      {"Disk|a$b|", {}},
      {"Disk|print$|Printer Drivers", {}},
      {"Disk|blueprints|", {}},
      {"Disk|Print|", {"Print"}},
      {"Disk|music|printed on Sundays", {"music"}},
      {"Disk|music|costs 5 $", {"music"}},
      {"Disk|music|the web_page", {}},
      {"web_page Disk|music|", {}},
      {"Disk|web_page2|", {}},
      {"Disk|web page|", {"web page"}},
      {"Disk|Web_page|", {"Web_page"}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(names_in_listing(std::string(row.line) + "\n"), row.names);
  }
}

TEST(RemoteBrowse, BehindAHiddenShareTheLineIsLookedAtOnceMore) {
  const struct {
    const char *line;
    Names names;
  } rows[] = {
      {"Disk|C$|Disk|music|", {"music"}},
      {"Disk|C$|Disk|music", {"music"}},
      {"Disk|C$|Disk|D$|Disk|music|", {}},
      {"Disk|C$|Disk|blueprints|", {}},
      {"Disk|C$|Disk|music|Disk|films|", {"music"}},
      {"Disk|C$|Default Disk|music|", {"lt Disk"}},
      {"Disk|C$|Disk|music|web_page", {}},
      {"Disk|print$|Disk|music|", {"music"}},
      {"Disk|blueprints|Disk|music|", {}},
      {"Disk|music|Disk|films|", {"music"}},
      {"Disk|C$|Disk", {}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(names_in_listing(std::string(row.line) + "\n"), row.names);
  }
}

TEST(RemoteBrowse, LineEndsAndBlanksBeforeThemAreNoPartOfAName) {
  EXPECT_EQ(names_in_listing("Disk|music\r\nDisk|films \t\nDisk| docs |\nDisk|last"),
            (Names{"music", "films", " docs ", "last"}));
}

TEST(RemoteBrowse, NamesStandInTheOrderOfTheListingAndMayRepeat) {
  EXPECT_EQ(names_in_listing("Disk|b|\nDisk|a|\nDisk|b|\n"), (Names{"b", "a", "b"}));
}

TEST(RemoteBrowse, AHostWithoutDiskSharesHasAnEmptyList) {
  Insert_Name_Node("before");
  EXPECT_EQ(names_in_listing("IPC|IPC$|IPC Service\n"), Names{});
  EXPECT_EQ(names_in_listing(""), Names{});
}

TEST(RemoteBrowse, ALongLineComesInPiecesOf511) {
  const std::string name(511 - 5, 'n');
  EXPECT_EQ(names_in_listing("Disk|" + name + "\n"), Names{name});
  EXPECT_EQ(names_in_listing("Disk|" + name + "n\n"), Names{name});
  EXPECT_EQ(names_in_listing("Disk|music|" + std::string(500, 'c') + "Disk|films|\n"),
            (Names{"music", "films"}));
  EXPECT_EQ(names_in_listing("Disk|music|" + std::string(5000, 'c') + "\nDisk|films|\n"),
            (Names{"music", "films"}));
  EXPECT_TRUE(has_failed("Disk|session|" + std::string(498, 'c') + "fail\n"));
}

// A thousand shares are more than the buffer of a pipe holds.
TEST(RemoteBrowse, AllSharesOfALongListingAreListed) {
  std::string text;
  for (int i = 0; i < 1000; ++i) {
    text += "Disk|share " + std::to_string(i) + "|" + std::string(200, 'c') + "\n";
  }
  const Names names = names_in_listing(text);
  ASSERT_EQ(names.size(), 1000U);
  EXPECT_EQ(names.back(), "share 999");
}

// ---- Failures

TEST(RemoteBrowse, AFailedSessionIsNoFailedConnection) {
  EXPECT_EQ(names_in_listing("session setup failed: NT_STATUS_ACCESS_DENIED\nDisk|music|\n"), Names{"music"});
  EXPECT_EQ(names_in_listing("failed to begin a session\nDisk|music|\n"), Names{"music"});
}

TEST(RemoteBrowse, AnyOtherLineThatFailsEndsTheListing) {
  const struct {
    const char *text;
    bool fails;
  } rows[] = {
      {"Disk|music|\nConnection to attic failed\nDisk|films|\n", true},
      {"failure", true},
      {"Disk|failover|\n", true},
      {"Disk|music|never fails\n", true},
      {"Disk|fail$|session\n", false},
      {"Failed\n", false},
      {"FAIL\n", false},
      {"Session setup fails\n", true},
      {"session setup\nfailed\n", true},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(has_failed(row.text), row.fails);
  }
}

TEST(RemoteBrowse, AFailureEmptiesTheNameListOfThoseBefore) {
  Insert_Name_Node("before");
  EXPECT_TRUE(has_failed("failed\n"));
  EXPECT_EQ(listed_names(), Names{});
}

TEST(RemoteBrowse, AnEmptyHostLeavesTheNameListAsItWas) {
  answers("Disk|music|\n");
  Insert_Name_Node("before");
  EXPECT_EQ(get_host_share_name(""), 0);
  EXPECT_EQ(get_host_share_name(nullptr), 0);
  EXPECT_EQ(listed_names(), Names{"before"});
  EXPECT_FALSE(exists(calls_of_smbclient));
}

TEST(RemoteBrowse, WithoutSmbclientTheNameListStaysAsItWas) {
  without_smbclient();
  Insert_Name_Node("before");
  EXPECT_EQ(get_host_share_name("attic"), 0);
  EXPECT_EQ(listed_names(), Names{"before"});
}

TEST(RemoteBrowse, ASecondListingReplacesTheFirst) {
  EXPECT_EQ(names_in_listing("Disk|music|\n"), Names{"music"});
  EXPECT_EQ(names_in_listing("Disk|films|\n"), Names{"films"});
}

// A smbclient that cannot be started says so through the shell.
TEST(RemoteBrowse, ASmbclientThatIsNoProgramHasNoShares) {
  answers("");
  Appliance{}.file(smbclient, "", 0644);
  EXPECT_EQ(get_host_share_name("attic"), 1);
  EXPECT_EQ(listed_names(), Names{});
}

// ---- Debug output

TEST(RemoteBrowse, TheListingIsPrintedWhenTheFlagIsOneAndTheNamesForAnyButZero) {
  answers("Disk|music|My music\r\n\nIPC|IPC$|Service\nDisk|films|\n");
  const std::string names = "Name = music\nName = films\n";
  expect_listing_and_trace([] { get_host_share_name("attic"); }, names,
                           "cmd = [/usr/bin/smbclient -gNL \"attic\" 2>&1]\n"
                           "\t[Disk|music|My music]\n"
                           "\t[]\n"
                           "\t[IPC|IPC$|Service]\n"
                           "\t[Disk|films|]\n" +
                               names);
}

TEST(RemoteBrowse, AFailureIsPrintedWhenTheFlagIsOne) {
  answers("Disk|music|\nfailed\nDisk|films|\n");
  expect_trace([] { get_host_share_name("attic"); }, "cmd = [/usr/bin/smbclient -gNL \"attic\" 2>&1]\n"
                                                     "\t[Disk|music|]\n"
                                                     "\t[failed]\n"
                                                     "connect attic fail!\n");
}

TEST(RemoteBrowse, AMissingSmbclientIsPrintedWhenTheFlagIsOneAndForAnEmptyHostToo) {
  const std::string no_smbclient = "/usr/bin/smbclient not exist!\n";
  answers("");
  expect_trace([] { get_host_share_name(""); }, no_smbclient);
  expect_trace([] { get_host_share_name(nullptr); }, no_smbclient);
  Appliance{}.remove(smbclient);
  expect_trace([] { get_host_share_name("attic"); }, no_smbclient);
}

TEST(RemoteBrowse, ALineOf511IsPrintedWhole) {
  const std::string line(511, 'x');
  answers(line + "y\n");
  expect_trace([] { get_host_share_name("attic"); },
               "cmd = [/usr/bin/smbclient -gNL \"attic\" 2>&1]\n\t[" + line + "]\n\t[y]\n");
}

} // namespace
} // namespace nasshare::tests
