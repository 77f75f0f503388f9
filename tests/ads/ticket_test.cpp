// "kinit": the command, and the code that its output gives.
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

constexpr const char *typed = "/tmp/typed"; // what kinit reads

int ticket_answered(std::string_view output, int status = 0) {
  Appliance{}.command("kinit", output, status);
  in_a_domain();
  return ads_kinit();
}

void install_typing_kinit() {
  Appliance{}.script("kinit", std::string("cat >") + typed);
}

struct TicketAnswer {
  const char *output;
  int code;
};

// ---- The command

TEST(Ticket, IsAskedForWithThePasswordTyped) {
  install_typing_kinit();
  in_a_domain();
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_EQ(transcript(), "kinit Administrator@CORP.LAN\n");
  EXPECT_EQ(read_file(typed), "secret\n");
}

TEST(Ticket, KeepsBlanksAndShellCharactersOfThePassword) {
  install_typing_kinit();
  in_a_domain({.password = "a b  $HOME `id` \"c\" %s %% ;|&*"});
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_EQ(read_file(typed), "a b  $HOME `id` \"c\" %s %% ;|&*\n");
}

// The argument never closes, so the shell runs nothing; its complaint is not in the output that is read.
TEST(Ticket, WithASingleQuoteInThePasswordNeverReachesKinit) {
  Appliance{}.command("kinit", "kinit: no\n", 1);
  in_a_domain({.password = "it's"});
  Captured captured;
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_NE(captured.err(), "");
  EXPECT_EQ(transcript(), "");
}

TEST(Ticket, NothingEscapesAPairOfSingleQuotes) {
  install_typing_kinit();
  in_a_domain({.password = "x'  injected  'y"});
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_EQ(read_file(typed), "x injected y\n");
}

TEST(Ticket, PassesTheLongestSettingsOn) {
  install_typing_kinit();
  in_a_domain({.password = std::string(511, 'p')});
  put(smbshare.ads_username, std::string(511, 'u'));
  put(smbshare.ads_realm, std::string(511, 'R'));
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_EQ(transcript(), "kinit " + std::string(511, 'u') + "@" + std::string(511, 'R') + "\n");
  EXPECT_EQ(read_file(typed), std::string(511, 'p') + "\n");
}

TEST(Ticket, TakesEmptySettingsAsTheyAre) {
  install_typing_kinit();
  EXPECT_EQ(ads_kinit(), 100);
  EXPECT_EQ(transcript(), "kinit @\n");
  EXPECT_EQ(read_file(typed), "\n");
}

TEST(Ticket, ReadsStandardErrorToo) {
  Appliance{}.command("kinit", "", 1, "Preauthentication failed\n");
  in_a_domain();
  EXPECT_EQ(ads_kinit(), 102);
}

TEST(Ticket, ThatCannotBeAskedForIsAnotherFailure) {
  in_a_domain();
  const DescriptorLimit none(0);
  EXPECT_EQ(ads_kinit(), 56);
}

// ---- The phrases

TEST(TicketOutput, EachPhraseHasItsCode) {
  constexpr TicketAnswer answers[] = {
      {"Kinit successful\n", 100},
      {"Clock skew too great\n", 101},
      {"Preauthentication failed\n", 102},
      {"Client not found in Kerberos database\n", 103},
      {"Cannot resolve network address for KDC in requested realm\n", 104},
      {"anything else\n", 105},
      {"\n", 100},
  };
  for (const TicketAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(ticket_answered(answer.output, 1), answer.code);
  }
}

TEST(TicketOutput, PhrasesStandAnywhereInTheLine) {
  constexpr TicketAnswer answers[] = {
      {"kinit: Clock skew too great while getting initial credentials\n", 101},
      {"kinit(v5): Preauthentication failed while getting initial credentials\n", 102},
      {"kinit(v5): Client not found in Kerberos database while getting initial credentials\n", 103},
      {"kinit(v5): Cannot resolve network address for KDC in requested realm while\n", 104},
      {"* Kinit successful *\n", 100},
      {"clock skew too great\n", 105},
  };
  for (const TicketAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(ticket_answered(answer.output), answer.code);
  }
}

TEST(TicketOutput, OfALineWithSeveralPhrasesTheFirstOfTheTableDecides) {
  constexpr TicketAnswer answers[] = {
      {"Clock skew too great, Kinit successful\n", 100},
      {"Preauthentication failed: Clock skew too great\n", 101},
      {"Client not found in Kerberos database; Preauthentication failed\n", 102},
      {"Cannot resolve network address for KDC in requested realm: Client not found in Kerberos database\n",
       103},
  };
  for (const TicketAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(ticket_answered(answer.output), answer.code);
  }
}

TEST(TicketOutput, TheFirstLineThatIsNoPromptDecides) {
  constexpr TicketAnswer answers[] = {
      {"Password for Administrator@CORP.LAN: \nClock skew too great\n", 101},
      {"Password for a:\nPassword for b:\nPreauthentication failed\n", 102},
      {"something\nKinit successful\n", 105},
      {"Kinit successful\nClock skew too great\n", 100},
      {"\nClock skew too great\n", 100},
      {"Password for a:\n\nClock skew too great\n", 100},
      {" \t\r\nClock skew too great\n", 100},
  };
  for (const TicketAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(ticket_answered(answer.output), answer.code);
  }
}

// A prompt without a line end of its own takes what follows with it.
TEST(TicketOutput, OfPromptsOnlyMeansATicket) {
  constexpr const char *outputs[] = {
      "",
      "Password for Administrator@CORP.LAN: \n",
      "Password for Administrator@CORP.LAN: ",
      "Password for a:\nPassword for b:\nEnter Password for c\n",
      "Password for Administrator@CORP.LAN: kinit: Clock skew too great\n",
  };
  for (const char *output : outputs) {
    SCOPED_TRACE(output);
    EXPECT_EQ(ticket_answered(output), 100);
    EXPECT_EQ(ticket_answered(output, 1), 100); // the exit status does not count
  }
}

// Of a line of more than 511 characters every piece is a line.
TEST(TicketOutput, ALongLineComesInPieces) {
  EXPECT_EQ(ticket_answered(std::string(491, 'x') + "Clock skew too great\n"), 101);
  EXPECT_EQ(ticket_answered(std::string(492, 'x') + "Clock skew too great\n"), 105);
  EXPECT_EQ(ticket_answered("Password for " + std::string(498, 'x') + "Clock skew too great\n"), 101);
}

TEST(TicketOutput, IsReadToItsEnd) {
  Appliance{}.script("kinit",
                     "echo nonsense; head -c 1000000 /dev/zero | tr '\\0' '\\n'; echo finished >/tmp/end");
  in_a_domain();
  EXPECT_EQ(ads_kinit(), 105);
  EXPECT_EQ(read_file("/tmp/end"), "finished\n");
}

// ---- What kinit prints today

TEST(RecordedTicket, GivesTheCodes) {
  constexpr TicketAnswer answers[] = {
      {"kinit-ok", 100},
      {"kinit-wrong-password", 105},
      {"kinit-unknown-user", 105},
      {"kinit-no-network", 105},
  };
  for (const TicketAnswer &answer : answers) {
    SCOPED_TRACE(answer.output);
    EXPECT_EQ(ticket_answered(recording(std::string("domain/") + answer.output + ".stdout")), answer.code);
  }
}

// ---- Debug output

TEST(TicketDebug, EchoesTheCommandWithThePasswordForExactlyOne) {
  Appliance{}.command("kinit", "Clock skew too great\n", 1);
  in_a_domain();
  expect_trace([] { EXPECT_EQ(ads_kinit(), 101); },
               "kinit : [echo 'secret' | kinit 'Administrator@CORP.LAN' 2>&1]\n");
}

TEST(TicketDebug, ComesBeforeACommandThatCannotBeStarted) {
  in_a_domain({.password = "%s"});
  const auto ask = [] {
    const DescriptorLimit none(0);
    EXPECT_EQ(ads_kinit(), 56);
  };
  expect_trace(ask, "kinit : [echo '%s' | kinit 'Administrator@CORP.LAN' 2>&1]\n");
}

} // namespace
} // namespace nasshare::tests
