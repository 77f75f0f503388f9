// nasshare browse, join and leave.
#include "domain.h"
#include "nasshare_cli.h"
#include "paths.h"

#include <string>
#include <sys/mount.h>
#include <utility>

namespace nasshare::tests {
namespace {

// ---- browse

// The smbclient at its fixed place prints that text and notes its arguments.
void smbclient_answers(const std::string &text) {
  Appliance{}
      .file("/run/appliance/answer", text)
      .file("/run/appliance/smbclient",
            "#!/bin/sh\necho \"$@\" >/run/appliance/arguments\ncat /run/appliance/answer\n", 0755);
  ASSERT_EQ(mount("/run/appliance/smbclient", "/usr/bin/smbclient", "", MS_BIND, nullptr), 0);
}

TEST(Browse, PrintsTheSharesOfAHost) {
  smbclient_answers("Disk|music|My music\nDisk|IPC$|IPC Service\nDisk|R&B|\nServer|OTHER|\n");
  const Ended ended = nasshare({"browse", "srv-1.lan"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "music\nR&B\n");
  EXPECT_EQ(read_file("/run/appliance/arguments"), "-gNL srv-1.lan\n");
}

TEST(Browse, AHostWithoutSharesPrintsNothing) {
  smbclient_answers("");
  succeed({"browse", "fe80::1%egiga0"});
}

TEST(Browse, AHostThatCannotBeReachedIsRefused) {
  smbclient_answers(recording("samba/smbclient-gNL-refused.stdout"));
  expect_refusal({"browse", "10.0.0.9"},
                 "the shares of 10.0.0.9 cannot be listed: no connection, or no /usr/bin/smbclient");
}

TEST(Browse, WhatIsNoHostNeverReachesTheShell) {
  for (const std::string host :
       {"", "-h", "a b", "$(touch /tmp/ran)", "a\";touch /tmp/ran;\"", "`id`", "a\\b"}) {
    expect_refusal({"browse", host}, "\"" + host + "\" is no host name or address");
  }
  EXPECT_FALSE(exists("/tmp/ran"));
}

// ---- join, leave

class Domain : public testing::Test {
protected:
  Appliance machine_ = domain_member();
};

TEST_F(Domain, JoinSaysThatItIsDone) {
  const Ended ended = nasshare({"join"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "1: joined, ticket obtained, winbind running\n");
  EXPECT_NE(transcript().find("\nnet ads join -U Administrator%secret\n"), std::string::npos);
  EXPECT_EQ(read_file("/etc/nsswitch.conf").substr(0, 25), "passwd:     files winbind");
}

TEST_F(Domain, JoinSaysWhatTheJoinFailedOf) {
  for (const auto &[output, reason] : {
           std::pair("Time difference at domain controller\n",
                     "51: the clock differs from the domain controller's"),
           std::pair("Logon failure\n", "52: logon failure: user or password wrong"),
           std::pair("Improperly formed account name\n",
                     "53: badly formed account name, or the service principal names could not be set"),
           std::pair("Failed to join domain\n", "55: the join failed"),
           std::pair("Failed\n", "56: another failure, or a command could not be started"),
       }) {
    machine_.command("net", output, 255);
    expect_refusal({"join"}, reason);
  }
}

TEST_F(Domain, JoinSaysWhatTheTicketFailedOf) {
  for (const auto &[output, reason] : {
           std::pair("Clock skew too great\n", "101: the clock differs too much for a ticket"),
           std::pair("Preauthentication failed\n", "102: pre-authentication failed: wrong password"),
           std::pair("Client not found in Kerberos database\n",
                     "103: the user is not in the Kerberos database"),
           std::pair("Cannot resolve network address for KDC in requested realm\n",
                     "104: the domain controller's address cannot be resolved"),
           std::pair("Password incorrect\n", "105: another ticket error"),
       }) {
    machine_.command("kinit", output, 1);
    expect_refusal({"join"}, reason);
  }
}

TEST_F(Domain, JoinNeedsDomainModeAndTheFiles) {
  machine_.remove(smb_conf);
  expect_refusal({"join"}, "0: a configuration file is missing after it was written");
  machine_.config("/system_mgr/samba/ads_enable", "0");
  expect_refusal({"join"}, "2: domain mode is not enabled in the configuration");
}

TEST_F(Domain, LeaveGoesBackToLocalAccounts) {
  expect_refusal({"leave"}, "3: the configuration still enables domain mode; nothing was changed");
  machine_.config("/system_mgr/samba/ads_enable", "0").file("/etc/krb5.conf", "");
  const Ended ended = nasshare({"leave"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "1: local accounts; the Samba service is stopped\n");
  EXPECT_FALSE(exists("/etc/krb5.conf"));
  EXPECT_EQ(read_file("/etc/nsswitch.conf").substr(0, 18), "passwd:     files\n");
}

TEST(NetworkUsage, IsExplained) {
  expect_wrong_usage({"browse"}, "usage: nasshare browse HOST");
  expect_wrong_usage({"join", "x"}, "usage: nasshare join");
  expect_wrong_usage({"leave", "x"}, "usage: nasshare leave");
}

} // namespace
} // namespace nasshare::tests
