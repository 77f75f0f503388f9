// smbcom, smbcv, smbcmd, smb and samba_tmpfs.sh without a real Samba: what they make, print and refuse. The
// real one is asked in tests/real.
#include "appliance.h"
#include "paths.h"
#include "service_commands.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace nasshare::tests {
namespace {

TEST(Smbcom, GeneratesWithNasshare) {
  Appliance{}.command("nasshare");
  EXPECT_EQ(command("smbcom").status, 0);
  EXPECT_EQ(command("smbcom -g").status, 0);
  EXPECT_EQ(command("smbcom -d").status, 0);
  EXPECT_EQ(transcript(), "nasshare smb-conf\nnasshare smb-conf\nnasshare --debug smb-conf\n");
}

// nasshare would wait for the lock that smbcom has.
TEST(Smbcom, TellsThatItHasTheLock) {
  Appliance{}.script("nasshare", "[ -n \"$NASSHARE_SERVICE_LOCK\" ]");
  EXPECT_EQ(command("smbcom -g").status, 0);
}

// Any user who may read the file could hold the lock for ever.
TEST(Smbcom, ItsLockIsForNobodyElseToRead) {
  Appliance{}.command("nasshare");
  EXPECT_EQ(command("smbcom -g").status, 0);
  EXPECT_EQ(mode("/run/nasshare-service.lock"), 0600U);
  ASSERT_EQ(chmod("/run/nasshare-service.lock", 0644), 0);
  EXPECT_EQ(command("smbcom -g").status, 0);
  EXPECT_EQ(mode("/run/nasshare-service.lock"), 0600U);
}

TEST(Smbcom, WaitsForNothingThatIsLeftInTheBackground) {
  Appliance{}.script("nasshare", "sleep 60 >/dev/null 2>&1 &");
  EXPECT_EQ(command("smbcom -g").status, 0);
  EXPECT_EQ(shell("timeout 10 " + commands + "/smbcom -g").status, 0);
  shell("pkill -x sleep");
}

TEST(Smbcom, PassesOnThatNothingWasGenerated) {
  Appliance{}.command("nasshare", "", 255, "nasshare: no data volume\n");
  const Ended ended = command("smbcom");
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.err, "nasshare: no data volume\nsmbcom: /etc/samba/smb.conf was not generated\n");
}

// ---- smb start, until testparm refuses the file

std::string steps_of_a_start(const std::string &generated, int status_of_wbinfo) {
  Appliance{}
      .file(smb_conf, generated)
      .command("nasshare")
      .command("testparm", "", 1)
      .command("wbinfo", "", status_of_wbinfo);
  EXPECT_EQ(command("smb start").status, 1);
  const std::string steps = transcript();
  return steps.substr(0, steps.find("testparm"));
}

TEST(SmbStart, GeneratesSmbConf) {
  EXPECT_EQ(steps_of_a_start("security = user\n", 0), "nasshare smb-conf\n");
}

// Accounts of the domain are unknown then, and would be left out.
TEST(SmbStart, KeepsADomainsSmbConfWhileWinbindDoesNotAnswer) {
  EXPECT_EQ(steps_of_a_start("security = ads\n", 1), "wbinfo -t\n");
}

TEST(SmbStart, GeneratesADomainsSmbConfOnceWinbindAnswers) {
  EXPECT_EQ(steps_of_a_start("security = ads\n", 0), "wbinfo -t\nnasshare smb-conf\n");
}

TEST(Smbcv, MakesTheFoldersOfSamba) {
  Appliance{}.hidden("/dev/sda4", "/mnt/HD_a4").hidden("/dev/sdb4", "/mnt/HD_b4");
  Appliance{}.remove("/etc/samba").remove("/run/samba");
  EXPECT_EQ(command("smbcv").status, 0);
  for (const char *folder : {"/etc/samba", "/run/samba", "/var/cache/samba", "/var/log/samba"}) {
    EXPECT_TRUE(exists(folder)) << folder;
  }
  EXPECT_EQ(mode("/var/lib/samba/private"), 0700U);
}

TEST(Smbcv, MakesTheSpoolFolderOfTheFirstHiddenPartition) {
  Appliance{}.hidden("/dev/sda4", "/mnt/HD_a4").hidden("/dev/sdb4", "/mnt/HD_b4");
  EXPECT_EQ(command("smbcv").status, 0);
  EXPECT_EQ(mode("/mnt/HD_a4/.lpd"), 01777U);
  EXPECT_FALSE(exists("/mnt/HD_b4/.lpd"));
}

TEST(Smbcv, LeavesWhatExists) {
  Appliance{}
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .folder("/mnt/HD_a4/.lpd", 0700)
      .file("/mnt/HD_a4/.lpd/job", "x");
  EXPECT_EQ(command("smbcv").status, 0);
  EXPECT_EQ(mode("/mnt/HD_a4/.lpd"), 0700U);
  EXPECT_EQ(read_file("/mnt/HD_a4/.lpd/job"), "x");
}

TEST(Smbcmd, WithoutSmbdThereIsNothingToDo) {
  const Ended ended = command("smbcmd -l");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out + ended.err, "");
}

TEST(ServiceCommands, RefuseOtherArguments) {
  for (const char *line : {"smb", "smb restart", "smb start now", "smbcom -x", "smbcmd", "smbcmd -x",
                           "samba_tmpfs.sh", "samba_tmpfs.sh 2", "samba_tmpfs.sh 1 1"}) {
    const Ended ended = command(line);
    EXPECT_EQ(ended.status, 2) << line;
    EXPECT_EQ(ended.err.substr(0, 6), "usage:") << line;
  }
}

// ---- samba_tmpfs.sh

bool is_volatile(const std::string &folder) {
  return shell("grep -q '^samba_tmpfs " + folder + " tmpfs ' /proc/mounts").status == 0;
}

TEST(SambaTmpfs, OnCoversTheStateWithEmptyFolders) {
  Appliance{}.file("/var/lib/samba/private/secrets.tdb", "old");
  EXPECT_EQ(command("samba_tmpfs.sh 1").status, 0);
  EXPECT_TRUE(is_volatile("/var/lib/samba"));
  EXPECT_TRUE(is_volatile("/var/cache/samba"));
  EXPECT_EQ(names_in("/var/lib/samba/private"), Names{});
}

TEST(SambaTmpfs, OffBringsTheOldStateBack) {
  Appliance{}.file("/var/lib/samba/private/secrets.tdb", "old");
  ASSERT_EQ(command("samba_tmpfs.sh 1").status, 0);
  Appliance{}.file("/var/lib/samba/private/secrets.tdb", "of the domain");
  EXPECT_EQ(command("samba_tmpfs.sh 0").status, 0);
  EXPECT_FALSE(is_volatile("/var/lib/samba"));
  EXPECT_FALSE(is_volatile("/var/cache/samba"));
  EXPECT_EQ(read_file("/var/lib/samba/private/secrets.tdb"), "old");
}

TEST(SambaTmpfs, OnTwiceKeepsTheStateAndOffOnceEndsIt) {
  ASSERT_EQ(command("samba_tmpfs.sh 1").status, 0);
  Appliance{}.file("/var/lib/samba/private/secrets.tdb", "of the domain");
  EXPECT_EQ(command("samba_tmpfs.sh 1").status, 0);
  EXPECT_TRUE(exists("/var/lib/samba/private/secrets.tdb"));
  EXPECT_EQ(command("samba_tmpfs.sh 0").status, 0);
  EXPECT_FALSE(is_volatile("/var/lib/samba"));
}

TEST(SambaTmpfs, OffUncoversNothingElse) {
  EXPECT_EQ(command("samba_tmpfs.sh 0").status, 0);
  EXPECT_EQ(shell("mountpoint -q /var/lib/samba").status, 0);
}

TEST(SambaTmpfs, OffReportsAFolderInUse) {
  ASSERT_EQ(command("samba_tmpfs.sh 1").status, 0);
  EXPECT_NE(shell("cd /var/lib/samba && " + commands + "/samba_tmpfs.sh 0").status, 0);
}

} // namespace
} // namespace nasshare::tests
