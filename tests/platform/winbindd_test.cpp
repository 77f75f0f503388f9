// The command winbindd in front of the stock one, and what "smb stop" does with the helpers that it leaves.
#include "appliance.h"
#include "paths.h"
#include "service_commands.h"

#include <gtest/gtest.h>
#include <regex>
#include <string>

namespace nasshare::tests {
namespace {

class Winbindd : public testing::Test {
protected:
  Winbindd() { machine_.command("testparm").file(smb_conf, "[ global ]\nsecurity = ads\n[ Music ]\n"); }

  // A program that only waits, under that name and with winbindd's mark in its environment.
  void start_marked(const std::string &program) {
    ASSERT_EQ(shell("cp /bin/sleep " + program + "; NASSHARE_WINBINDD=yes " + program +
                    " 60 >/dev/null 2>&1 & echo $! >" + program + ".pid; sleep 0.1")
                  .status,
              0);
  }
  static bool is_alive(const std::string &program) {
    return shell("grep -q . /proc/$(cat " + program + ".pid)/cmdline").status == 0;
  }

  Appliance machine_;
};

// The transcript without the process ids behind the names of scratch files.
std::string calls() {
  return std::regex_replace(transcript(), std::regex(R"((smbd\.conf\.new)\.[0-9]+)"), "$1");
}

TEST_F(Winbindd, GetsTheDerivedFileAndItsMark) {
  machine_.script("winbindd", "echo mark=$NASSHARE_WINBINDD; cat /run/samba/smbd.conf");
  const Ended ended = command("winbindd");
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out, "mark=yes\n[global]\npassdb backend = smbpasswd\nusershare max shares = 0\n"
                       "security = ads\n[Music]\n");
  EXPECT_EQ(calls(), "testparm -s /run/samba/smbd.conf.new\nwinbindd -s /run/samba/smbd.conf\n");
  EXPECT_EQ(read_file(smb_conf), "[ global ]\nsecurity = ads\n[ Music ]\n");
}

TEST_F(Winbindd, HandsItsArgumentsAndTheStatusOn) {
  machine_.command("winbindd", "", 7);
  EXPECT_EQ(command("winbindd -F --no-process-group").status, 7);
  EXPECT_EQ(calls(),
            "testparm -s /run/samba/smbd.conf.new\nwinbindd -s /run/samba/smbd.conf -F --no-process-group\n");
}

TEST_F(Winbindd, IsFoundThoughItComesFirstOnTheSearchPath) {
  machine_.command("winbindd");
  EXPECT_EQ(shell("PATH=" + commands + ":$PATH; winbindd").status, 0);
  EXPECT_EQ(calls(), "testparm -s /run/samba/smbd.conf.new\nwinbindd -s /run/samba/smbd.conf\n");
}

TEST_F(Winbindd, LeavesNoScratchFileBehind) {
  machine_.command("winbindd");
  command("winbindd");
  EXPECT_EQ(names_in("/run/samba"), Names{"smbd.conf"});
}

TEST_F(Winbindd, DoesNotStartWithAFileThatSambaRefuses) {
  machine_.command("winbindd").command("testparm", "", 1);
  const Ended ended = command("winbindd");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err,
            "winbindd: Samba cannot take /etc/samba/smb.conf (see testparm /etc/samba/smb.conf)\n");
  EXPECT_EQ(calls(), "testparm -s /run/samba/smbd.conf.new\n");
}

TEST_F(Winbindd, WithoutTheStockOneItSaysSo) {
  machine_.no_command("winbindd");
  const Ended ended = shell("PATH=" + commands + ":$PATH; winbindd");
  EXPECT_EQ(ended.status, 127);
  EXPECT_EQ(ended.err, "winbindd: winbind is not installed\n");
}

TEST_F(Winbindd, SmbStopEndsTheHelpersOfWinbinddOnly) {
  ASSERT_NO_FATAL_FAILURE(start_marked("/tmp/winbindd"));
  ASSERT_NO_FATAL_FAILURE(start_marked("/tmp/rpcd_lsad"));
  EXPECT_EQ(command("smb stop").status, 0);
  EXPECT_TRUE(is_alive("/tmp/winbindd"));
  EXPECT_FALSE(is_alive("/tmp/rpcd_lsad"));
  shell("kill $(cat /tmp/winbindd.pid)");
}

} // namespace
} // namespace nasshare::tests
