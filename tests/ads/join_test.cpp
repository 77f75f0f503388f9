// "net ads join": the command, and the code that its output gives.
#include "appliance.h"
#include "debug_output.h"
#include "domain.h"
#include "fields.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

int join_answered(std::string_view output, int status = 0) {
  Appliance{}.command("net", output, status);
  in_a_domain();
  return ads_join_domain();
}

struct JoinAnswer {
  const char *output;
  int code;
};

// ---- The command

TEST(Join, NamesTheUserAndThePasswordInOneArgument) {
  EXPECT_EQ(join_answered(""), 50);
  EXPECT_EQ(transcript(), "net ads join -U Administrator%secret\n");
}

TEST(Join, KeepsBlanksAndShellCharactersOfThePassword) {
  Appliance{}.command("net");
  in_a_domain({.password = "a b  $HOME `id` \"c\" \\ %s %% ;|&*"});
  EXPECT_EQ(ads_join_domain(), 50);
  EXPECT_EQ(transcript(), "net ads join -U Administrator%a b  $HOME `id` \"c\" \\ %s %% ;|&*\n");
}

// The argument never closes, so the shell runs nothing; its complaint is not in the output that is read.
TEST(Join, WithASingleQuoteInThePasswordNeverReachesNet) {
  Appliance{}.command("net", "Failed to join domain: no\n", 255);
  in_a_domain({.password = "it's"});
  Captured captured;
  EXPECT_EQ(ads_join_domain(), 50);
  EXPECT_NE(captured.err(), "");
  EXPECT_EQ(transcript(), "");
}

TEST(Join, NothingEscapesAPairOfSingleQuotes) {
  Appliance{}.command("net");
  in_a_domain({.password = "x' injected 'y"});
  EXPECT_EQ(ads_join_domain(), 50);
  EXPECT_EQ(transcript(), "net ads join -U Administrator%x injected y\n");
}

TEST(Join, PassesTheLongestSettingsOn) {
  Appliance{}.command("net");
  in_a_domain({.password = std::string(511, 'p')});
  put(smbshare.ads_username, std::string(511, 'u'));
  EXPECT_EQ(ads_join_domain(), 50);
  EXPECT_EQ(transcript(), "net ads join -U " + std::string(511, 'u') + "%" + std::string(511, 'p') + "\n");
}

TEST(Join, TakesEmptySettingsAsTheyAre) {
  Appliance{}.command("net");
  EXPECT_EQ(ads_join_domain(), 50);
  EXPECT_EQ(transcript(), "net ads join -U %\n");
}

TEST(Join, ReadsStandardErrorToo) {
  Appliance{}.command("net", "", 255, "Logon failure\n");
  in_a_domain();
  EXPECT_EQ(ads_join_domain(), 52);
}

TEST(Join, ThatCannotBeStartedIsAnotherFailure) {
  in_a_domain();
  const DescriptorLimit none(0);
  EXPECT_EQ(ads_join_domain(), 56);
}

// The shell tells it in words that hold no phrase.
TEST(Join, WithoutTheProgramPassesForJoined) {
  Appliance{}.no_command("net");
  in_a_domain();
  EXPECT_EQ(ads_join_domain(), 50);
}

// ---- The phrases

TEST(JoinOutput, EachPhraseHasItsCode) {
  constexpr JoinAnswer answers[] = {
      {"Time difference at domain controller\n", 51},
      {"Logon failure\n", 52},
      {"Improperly formed account name\n", 53},
      {"Failed to set servicePrincipalNames\n", 53},
      {"Failed to join domain\n", 55},
      {"Failed\n", 56},
  };
  for (const JoinAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(join_answered(answer.output, 255), answer.code);
  }
}

TEST(JoinOutput, PhrasesStandAnywhereInALine) {
  constexpr JoinAnswer answers[] = {
      {"[07:30] ads: Time difference at domain controller is 400 s\n", 51},
      {"session setup failed: Logon failure (0xc000006d)\n", 52},
      {"net: Improperly formed account name!\n", 53},
      {"ADS: Failed to set servicePrincipalNames. Please ensure\n", 53},
      {"xFailed to join domainx\n", 55},
      {"ads_connect: Failed.\n", 56},
  };
  for (const JoinAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(join_answered(answer.output), answer.code);
  }
}

TEST(JoinOutput, OfALineWithSeveralPhrasesTheFirstOfTheTableDecides) {
  constexpr JoinAnswer answers[] = {
      {"Failed: Logon failure\n", 52},
      {"Failed to join domain: Logon failure\n", 52},
      {"Logon failure, Time difference at domain controller\n", 51},
      {"Failed to join domain: Improperly formed account name\n", 53},
      {"Failed to join domain, Failed to set servicePrincipalNames\n", 53},
      {"Improperly formed account name: Logon failure\n", 52},
      {"Failed. Failed to join domain\n", 55},
  };
  for (const JoinAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(join_answered(answer.output), answer.code);
  }
}

TEST(JoinOutput, OfSeveralLinesTheFirstThatMatchesDecides) {
  constexpr JoinAnswer answers[] = {
      {"Failed to join domain: x\nLogon failure\n", 55},
      {"Failed\nTime difference at domain controller\n", 56},
      {"Using short domain name -- CORP\n\nLogon failure\nFailed to join domain\n", 52},
      {"Logon failure\nJoined 'TARVO' to dns domain 'corp.lan'\n", 52},
  };
  for (const JoinAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(join_answered(answer.output), answer.code);
  }
}

TEST(JoinOutput, WithoutAPhraseMeansJoined) {
  constexpr const char *outputs[] = {
      "",
      "\n",
      "\r\n \n",
      "Joined\n",
      "failed to join domain\n",
      "LOGON FAILURE\n",
      "Logon  failure\n",
      "Fail\ned\n",
      "DNS update failed: NT_STATUS_INVALID_PARAMETER\n",
  };
  for (const char *output : outputs) {
    SCOPED_TRACE(output);
    EXPECT_EQ(join_answered(output), 50);
    EXPECT_EQ(join_answered(output, 255), 50); // the exit status does not count
  }
}

TEST(JoinOutput, MayLackTheLastLineEndAndMayHaveOthers) {
  EXPECT_EQ(join_answered("Logon failure"), 52);
  EXPECT_EQ(join_answered("Logon failure\r\n"), 52);
}

// A line of 511 characters is read whole; one more begins the next line.
TEST(JoinOutput, ALongLineComesInPieces) {
  EXPECT_EQ(join_answered(std::string(498, 'x') + "Logon failure\n"), 52);
  EXPECT_EQ(join_answered(std::string(499, 'x') + "Logon failure\n"), 50);
  EXPECT_EQ(join_answered(std::string(511, 'x') + "Logon failure\n"), 52);
  EXPECT_EQ(join_answered(std::string(5000, 'x') + "\nLogon failure\n"), 52);
}

TEST(JoinOutput, IsReadToItsEnd) {
  Appliance{}.script("net",
                     "echo Failed; head -c 1000000 /dev/zero | tr '\\0' '\\n'; echo finished >/tmp/end");
  in_a_domain();
  EXPECT_EQ(ads_join_domain(), 56);
  EXPECT_EQ(read_file("/tmp/end"), "finished\n");
}

// ---- What net prints today

TEST(RecordedJoin, GivesTheCodes) {
  constexpr JoinAnswer answers[] = {
      {"net-ads-join-ok", 50},
      {"net-ads-join-wrong-password", 55},
      {"net-ads-join-plain-user", 55},
      {"net-ads-join-no-network", 55},
  };
  for (const JoinAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(join_answered(recording(std::string("domain/") + answer.output + ".stdout")), answer.code);
  }
}

// ---- Debug output

constexpr const char *echo = "ads join cmd : [net ads join -U 'Administrator%secret' 2>&1]\n";

TEST(JoinDebug, EchoesTheCommandForExactlyOne) {
  Appliance{}.command("net", "Logon failure\n", 255);
  in_a_domain();
  expect_trace([] { EXPECT_EQ(ads_join_domain(), 52); }, echo);
}

TEST(JoinDebug, EchoesPercentSignsAsTheyAre) {
  Appliance{}.command("net");
  in_a_domain({.password = "%d%s%%"});
  expect_trace([] { ads_join_domain(); }, "ads join cmd : [net ads join -U 'Administrator%%d%s%%' 2>&1]\n");
}

TEST(JoinDebug, ComesBeforeACommandThatCannotBeStarted) {
  in_a_domain();
  const auto join = [] {
    const DescriptorLimit none(0);
    EXPECT_EQ(ads_join_domain(), 56);
  };
  expect_trace(join, echo);
}

} // namespace
} // namespace nasshare::tests
