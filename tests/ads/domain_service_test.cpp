// Joining and leaving: the commands in their order, the files at each point, the codes.
#include "appliance.h"
#include "debug_output.h"
#include "domain.h"
#include "nasshare/ads.h"
#include "output.h"
#include "paths.h"
#include "text.h"
#include "unopenable.h"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

const std::string local_nsswitch = "passwd: files\n";

// A domain member whose commands all succeed; smbcom has generated smb.conf before.
class DomainService : public testing::Test {
protected:
  DomainService() { machine_.file(nsswitch_conf, local_nsswitch); }
  void switch_domain_mode(std::string_view value) {
    machine_.config("/system_mgr/samba/ads_enable", std::string(value));
  }

  // A process that pidof gives as winbindd's.
  void expect_winbindd_to_be_ended_by(int (*operation)()) {
    const pid_t winbindd = fork();
    if (winbindd == 0) {
      pause();
      _exit(0);
    }
    machine_.script("pidof", "echo " + std::to_string(winbindd));
    EXPECT_EQ(operation(), 1);
    int status = 0;
    ASSERT_EQ(waitpid(winbindd, &status, 0), winbindd);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
  }

  Appliance machine_ = domain_member();
};

using Start = DomainService;
using Stop = DomainService;

// ---- Joining

TEST_F(Start, RunsItsCommandsInOrder) {
  EXPECT_EQ(ads_start(), 1);
  EXPECT_EQ(transcript(), "smbcv\n"
                          "smbcom -g\n"
                          "pidof winbindd\n"
                          "smb stop\n"
                          "samba_tmpfs.sh 1\n"
                          "smb start\n"
                          "net ads join -U Administrator%secret\n"
                          "kinit Administrator@CORP.LAN\n"
                          "winbindd\n"
                          "wbinfo -u\n"
                          "smbcom\n"
                          "smbcmd -l\n");
}

TEST_F(Start, WritesBothFiles) {
  EXPECT_EQ(ads_start(), 1);
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "hosts:      dns files\n"));
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "passwd:     files winbind\n"));
  EXPECT_TRUE(contains(read_file(krb5_conf), "      kdc = dc1:88\n"));
}

TEST_F(Start, ReadsItsSettingsAnew) {
  in_a_domain({.password = "outdated"});
  EXPECT_EQ(ads_start(), 1);
  EXPECT_TRUE(contains(transcript(), "net ads join -U Administrator%secret\n"));
}

TEST_F(Start, WithDomainModeOffRunsAndChangesNothing) {
  for (const char *value : {"0", "2", "-1", ""}) {
    SCOPED_TRACE(value);
    switch_domain_mode(value);
    EXPECT_EQ(ads_start(), 2);
    EXPECT_EQ(transcript(), "");
    EXPECT_EQ(read_file(nsswitch_conf), local_nsswitch);
    EXPECT_FALSE(exists(krb5_conf));
  }
}

// The appliance generates smb.conf while accounts still come from its own files.
TEST_F(Start, HasSmbConfGeneratedBeforeTheFilesAreWritten) {
  machine_.script("smbcom", "cat /etc/nsswitch.conf >\"/tmp/nsswitch-at-smbcom$1\"; [ ! -e /etc/krb5.conf ] "
                            "|| : >\"/tmp/krb5-at-smbcom$1\"");
  EXPECT_EQ(ads_start(), 1);
  EXPECT_EQ(read_file("/tmp/nsswitch-at-smbcom-g"), local_nsswitch);
  EXPECT_FALSE(exists("/tmp/krb5-at-smbcom-g"));
  EXPECT_TRUE(contains(read_file("/tmp/nsswitch-at-smbcom"), "winbind"));
  EXPECT_TRUE(exists("/tmp/krb5-at-smbcom"));
}

TEST_F(Start, StopsTheServiceWhenTheFilesAreThere) {
  machine_.script("smb", "cp /etc/nsswitch.conf /etc/krb5.conf /tmp");
  EXPECT_EQ(ads_start(), 1);
  EXPECT_EQ(read_file("/tmp/nsswitch.conf"), read_file(nsswitch_conf));
  EXPECT_EQ(read_file("/tmp/krb5.conf"), read_file(krb5_conf));
}

TEST_F(Start, GivesUpWhenAFileIsMissing) {
  const auto in_no_folder = [this](const char *path) {
    machine_.remove(path).link("/no/such/folder/file", path);
  };
  const std::vector<std::function<void()>> losses = {
      [&] { in_no_folder(nsswitch_conf); },
      [&] { machine_.file(nsswitch_conf, local_nsswitch), in_no_folder(krb5_conf); },
      [&] { machine_.remove(nsswitch_conf).remove(krb5_conf).remove(smb_conf); },
  };
  std::string expected;
  for (const auto &lose : losses) {
    if (!expected.empty()) {
      machine_.remove(nsswitch_conf);
    }
    lose();
    EXPECT_EQ(ads_start(), 0);
    expected += "smbcv\nsmbcom -g\n";
    EXPECT_EQ(transcript(), expected);
  }
}

// What is there already counts, whether or not it could be written.
TEST_F(Start, GoesOnWithAFileThatIsThereAndCannotBeOpened) {
  make_unopenable(krb5_conf);
  EXPECT_EQ(ads_start(), 1);
}

TEST_F(Start, TakesSmbConfThatSmbcomMakes) {
  machine_.remove(smb_conf).script("smbcom", "echo '[ global ]' >/etc/samba/smb.conf");
  EXPECT_EQ(ads_start(), 1);
}

TEST_F(Start, EndsAWinbinddThatRuns) {
  expect_winbindd_to_be_ended_by(ads_start);
}

TEST_F(Start, GoesOnWhateverItsCommandsReturn) {
  for (const char *name : {"smbcv", "smbcom", "smb", "samba_tmpfs.sh", "winbindd", "wbinfo", "smbcmd"}) {
    machine_.command(name, "", 1);
  }
  machine_.command("net", "", 255).command("kinit", "", 1);
  EXPECT_EQ(ads_start(), 1);
  EXPECT_TRUE(contains(transcript(), "\nsmbcmd -l\n"));
}

TEST_F(Start, ThatFailsInTheJoinStopsThereAndTakesNothingBack) {
  machine_.command("net", recording("domain/net-ads-join-wrong-password.stdout"), 255);
  EXPECT_EQ(ads_start(), 55);
  EXPECT_EQ(transcript(), steps_to_the_join);
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "passwd:     files winbind\n"));
  EXPECT_TRUE(exists(krb5_conf));
}

TEST_F(Start, ThatFailsInTheTicketStopsThereAndTakesNothingBack) {
  machine_.command("kinit", recording("domain/kinit-wrong-password.stdout"), 1);
  EXPECT_EQ(ads_start(), 105);
  EXPECT_EQ(transcript(), std::string(steps_to_the_join) + "kinit Administrator@CORP.LAN\n");
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "passwd:     files winbind\n"));
  EXPECT_TRUE(exists(krb5_conf));
}

TEST_F(Start, HandsTheJoinsCodeOn) {
  for (const auto &[output, code] : {std::pair("Time difference at domain controller", 51),
                                     {"Logon failure", 52},
                                     {"Improperly formed account name", 53},
                                     {"Failed to join domain", 55},
                                     {"Failed", 56}}) {
    SCOPED_TRACE(output);
    machine_.command("net", output, 255);
    EXPECT_EQ(ads_start(), code);
  }
}

TEST_F(Start, HandsTheTicketsCodeOn) {
  for (const auto &[output, code] : {std::pair("Clock skew too great", 101),
                                     {"Preauthentication failed", 102},
                                     {"Client not found in Kerberos database", 103},
                                     {"Cannot resolve network address for KDC in requested realm", 104},
                                     {"anything", 105},
                                     {"Kinit successful", 1}}) {
    SCOPED_TRACE(output);
    machine_.command("kinit", output, 1);
    EXPECT_EQ(ads_start(), code);
  }
}

TEST_F(Start, WithTodaysToolsJoins) {
  machine_.command("net", recording("domain/net-ads-join-ok.stdout"))
      .command("kinit", recording("domain/kinit-ok.stdout"))
      .command("wbinfo", recording("domain/wbinfo-u.stdout"));
  EXPECT_EQ(output_of([] { EXPECT_EQ(ads_start(), 1); }), "");
}

TEST_F(Start, DiscardsWhatTheDaemonsPrintAndNothingElse) {
  for (const char *name : {"smb", "winbindd", "wbinfo"}) {
    machine_.command(name, "discarded\n", 0, "discarded\n");
  }
  machine_.command("smbcv", "from smbcv\n")
      .command("samba_tmpfs.sh", "from samba_tmpfs.sh\n")
      .command("smbcmd", "from smbcmd\n", 0, "error of smbcmd\n")
      .script("smbcom", "echo from smbcom $1");
  Captured captured;
  EXPECT_EQ(ads_start(), 1);
  EXPECT_EQ(captured.out(), "from smbcv\nfrom smbcom -g\nfrom samba_tmpfs.sh\nfrom smbcom\nfrom smbcmd\n");
  EXPECT_EQ(captured.err(), "error of smbcmd\n");
}

TEST_F(Start, EchoesItsTwoCommandsForExactlyOne) {
  expect_trace([] { EXPECT_EQ(ads_start(), 1); }, std::string(join_echo) + ticket_echo);
}

TEST_F(Start, PrintsTheCodeOfAFailedJoinForExactlyOne) {
  machine_.command("net", "Logon failure\n", 255);
  expect_trace([] { EXPECT_EQ(ads_start(), 52); }, std::string(join_echo) + "ADS_JOIN_ERROR : [52]\n");
}

TEST_F(Start, PrintsTheCodeOfAFailedTicketForExactlyOne) {
  machine_.command("kinit", "Clock skew too great\n", 1);
  expect_trace([] { EXPECT_EQ(ads_start(), 101); },
               std::string(join_echo) + ticket_echo + "KINIT_ERROR : [101]\n");
}

TEST_F(Start, PrintsNothingWhenItIsOffOrAFileIsMissing) {
  machine_.remove(smb_conf);
  expect_silence([] { EXPECT_EQ(ads_start(), 0); });
  switch_domain_mode("0");
  expect_silence([] { EXPECT_EQ(ads_start(), 2); });
}

TEST_F(Start, CanBeRunAgain) {
  EXPECT_EQ(ads_start(), 1);
  const std::string once = transcript();
  EXPECT_EQ(ads_start(), 1);
  EXPECT_EQ(transcript(), once + once);
}

// ---- Leaving

TEST_F(Stop, RunsItsCommandsInOrder) {
  switch_domain_mode("0");
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_EQ(transcript(), "smbcv\n"
                          "smbcom\n"
                          "pidof winbindd\n"
                          "smb stop\n"
                          "samba_tmpfs.sh 0\n");
}

TEST_F(Stop, WritesTheLocalFormAndDeletesTheKerberosFile) {
  ASSERT_EQ(ads_start(), 1);
  switch_domain_mode("0");
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "hosts:      files dns\n"));
  EXPECT_FALSE(contains(read_file(nsswitch_conf), "winbind"));
  EXPECT_FALSE(exists(krb5_conf));
}

TEST_F(Stop, WithoutAKerberosFileIsNoError) {
  switch_domain_mode("0");
  ASSERT_FALSE(exists(krb5_conf));
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_FALSE(exists(krb5_conf));
}

TEST_F(Stop, WithDomainModeOnChangesNothing) {
  machine_.file(krb5_conf, "kept\n");
  expect_silence([] { EXPECT_EQ(ads_stop(), 3); });
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(read_file(nsswitch_conf), local_nsswitch);
  EXPECT_EQ(read_file(krb5_conf), "kept\n");
}

TEST_F(Stop, EveryModeButOneIsLocal) {
  switch_domain_mode("2");
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_TRUE(contains(read_file(nsswitch_conf), "hosts:      files dns\n"));
}

TEST_F(Stop, HasSmbConfGeneratedBeforeTheFilesChange) {
  ASSERT_EQ(ads_start(), 1);
  switch_domain_mode("0");
  machine_.script("smbcom", "cp /etc/nsswitch.conf /etc/krb5.conf /tmp");
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_TRUE(contains(read_file("/tmp/nsswitch.conf"), "winbind"));
  EXPECT_TRUE(exists("/tmp/krb5.conf"));
}

TEST_F(Stop, StopsTheServiceWhenTheFilesHaveChanged) {
  ASSERT_EQ(ads_start(), 1);
  switch_domain_mode("0");
  machine_.script("smb", "cp /etc/nsswitch.conf /tmp; [ ! -e /etc/krb5.conf ] || : >/tmp/krb5-left");
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_EQ(read_file("/tmp/nsswitch.conf"), read_file(nsswitch_conf));
  EXPECT_FALSE(exists("/tmp/krb5-left"));
}

TEST_F(Stop, EndsAWinbinddThatRuns) {
  switch_domain_mode("0");
  expect_winbindd_to_be_ended_by(ads_stop);
}

TEST_F(Stop, GoesOnWhateverItsCommandsReturn) {
  switch_domain_mode("0");
  for (const char *name : {"smbcv", "smbcom", "smb", "samba_tmpfs.sh"}) {
    machine_.command(name, "", 1);
  }
  EXPECT_EQ(ads_stop(), 1);
  EXPECT_TRUE(contains(transcript(), "\nsamba_tmpfs.sh 0\n"));
}

TEST_F(Stop, PrintsNothing) {
  switch_domain_mode("0");
  machine_.command("smb", "discarded\n", 0, "discarded\n");
  expect_silence([] { EXPECT_EQ(ads_stop(), 1); });
}

} // namespace
} // namespace nasshare::tests
