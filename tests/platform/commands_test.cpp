// The service commands without a real Samba: what they make, derive, print and refuse. The real one is asked
// in tests/real.
#include "appliance.h"
#include "output.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr const char *commands = PROJECT_FOLDER "/platform/commands";
constexpr const char *smb_conf = "/etc/samba/smb.conf";
constexpr const char *smbd_conf = "/run/samba/smbd.conf";

Ended shell(const std::string &line) {
  return run_to_exit([&line] {
    execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
    _exit(127);
  });
}

Ended command(const std::string &line) {
  return shell(std::string(commands) + "/" + line);
}

// ---- The file that smbd reads

class SmbdConf : public testing::Test {
protected:
  void SetUp() override {
    machine_.folder("/run/samba").command("testparm", "", 0, recording("samba/testparm-local.stderr"));
  }

  std::string derived(const std::string &generated) {
    machine_.file(smb_conf, generated);
    const Ended ended =
        shell(std::string("here=") + commands + "; . $here/smbd_service.sh; derive_smbd_conf");
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(read_file(smb_conf), generated);
    return read_file(smbd_conf);
  }

  Appliance machine_;
};

TEST_F(SmbdConf, SectionNamesLoseTheBlanksAroundThemOnly) {
  EXPECT_EQ(derived("[ Music ]\n[ My  Docs ]\n[ M\u00fcsik ]\n[ R&B ]\n[ a]b ]\n[  padded  ]\n"),
            "[Music]\n[My  Docs]\n[M\u00fcsik]\n[R&B]\n[a]b]\n[ padded ]\n");
}

TEST_F(SmbdConf, BracketsInAValueAreNoSection) {
  EXPECT_EQ(derived("comment = [ x ]\n path = [ y ]\n"), "comment = [ x ]\n path = [ y ]\n");
}

TEST_F(SmbdConf, TheGlobalSectionTellsWhereAccountsAndSharesAre) {
  EXPECT_EQ(derived("[ global ]\nsecurity = user\n"),
            "[global]\npassdb backend = smbpasswd\nusershare max shares = 0\nsecurity = user\n");
}

TEST_F(SmbdConf, OptionsThatThisSambaDoesNotKnowAreLeftOut) {
  EXPECT_EQ(
      derived("use mmap = yes\nuse spnego = yes\nencrypt passwords = yes\ncomment = use spnego = yes\n"),
      "use mmap = yes\nencrypt passwords = yes\ncomment = use spnego = yes\n");
}

TEST_F(SmbdConf, AYesOrNoOptionWithoutEitherIsLeftOut) {
  EXPECT_EQ(derived("oplocks = \nmap archive = perhaps\npublic = yes\nbrowseable = no\noplocks = yes no\n"),
            "public = yes\nbrowseable = no\n");
}

// Samba would join the next line to it: a comment could swallow the share's path.
TEST_F(SmbdConf, NoLineEndsInABackslash) {
  EXPECT_EQ(derived("comment = a\\\npath = /mnt\nserver string = b\\\\ \n"),
            "comment = a\npath = /mnt\nserver string = b\n");
}

TEST_F(SmbdConf, EveryOtherLineIsKeptByteForByte) {
  const std::string lines = "\ncomment = \\ % ' \" \xff\nread list =\nvfs object = recycle\n"
                            "recycle:repository = ../recycle/%u\ndirectory mask  = 0777\n" +
                            ("write list = " + std::string(12287, 'x')) + "\n\n";
  EXPECT_EQ(derived(lines), lines);
}

TEST_F(SmbdConf, AFileThatSambaRefusesReplacesNothing) {
  derived("[ Music ]\n");
  machine_.file(smb_conf, "[ Films ]\n").command("testparm", "", 1, "Error loading services.\n");
  const Ended ended = shell(std::string("here=") + commands + "; . $here/smbd_service.sh; derive_smbd_conf");
  EXPECT_NE(ended.status, 0);
  EXPECT_EQ(read_file(smbd_conf), "[Music]\n");
  EXPECT_EQ(names_in("/run/samba"), std::vector<std::string>{"smbd.conf"});
}

// ---- smbcom, smbcv, smbcmd, smb

TEST(Smbcom, GeneratesWithNasshare) {
  Appliance{}.command("nasshare");
  EXPECT_EQ(command("smbcom").status, 0);
  EXPECT_EQ(command("smbcom -g").status, 0);
  EXPECT_EQ(command("smbcom -d").status, 0);
  EXPECT_EQ(transcript(), "nasshare smb-conf\nnasshare smb-conf\nnasshare --debug smb-conf\n");
}

TEST(Smbcom, PassesOnThatNothingWasGenerated) {
  Appliance{}.command("nasshare", "", 255, "nasshare: no data volume\n");
  const Ended ended = command("smbcom");
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.err, "nasshare: no data volume\nsmbcom: /etc/samba/smb.conf was not generated\n");
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
  EXPECT_EQ(names_in("/var/lib/samba/private"), std::vector<std::string>{});
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
  EXPECT_NE(shell(std::string("cd /var/lib/samba && ") + commands + "/samba_tmpfs.sh 0").status, 0);
}

// ---- wbinfo

class Wbinfo : public testing::Test {
protected:
  // The stock wbinfo and getent as a domain member has them.
  Wbinfo() {
    machine_.command("getent", recording("domain/getent-passwd-winbind.stdout"))
        .command("wbinfo", recording("domain/wbinfo-u.stdout"), 7, "stock\n");
  }

  static Ended wbinfo(const std::string &options) {
    return shell(std::string("PATH=") + commands + ":$PATH; wbinfo " + options);
  }

  Appliance machine_;
};

TEST_F(Wbinfo, ListsUsersWithTheirIds) {
  machine_.command("wbinfo").command("getent", "alice:*:10000:10001:Alice A:/home/winnt/CORP/alice:/bin/sh\n"
                                               "bob:*:10002:10001::/home/winnt/CORP/bob:/bin/sh\n");
  const Ended ended = wbinfo("-z");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "alice 10000 10001\nbob 10002 10001\n");
  EXPECT_EQ(transcript(), "wbinfo -u\ngetent -s winbind passwd\n");
}

TEST_F(Wbinfo, ListsTheUsersThatTheStockOneLists) {
  machine_.command("wbinfo");
  const Ended listed = shell(std::string("PATH=") + commands + ":$PATH; wbinfo -z | cut -d' ' -f1 | sort");
  const Ended recorded =
      shell("sort " PROJECT_FOLDER "/tests/recordings/domain/wbinfo-u.stdout | grep -v ' '");
  EXPECT_EQ(listed.out, recorded.out);
  EXPECT_NE(listed.out, "");
}

TEST_F(Wbinfo, LeavesOutANameWithABlank) {
  machine_.command("wbinfo").command("getent",
                                     "mary ann:*:10000:10001::/:/bin/sh\nbob:*:10002:10001::/:/bin/sh\n");
  EXPECT_EQ(wbinfo("-z").out, "bob 10002 10001\n");
}

TEST_F(Wbinfo, WithoutWinbinddItFailsAsTheStockOneDoes) {
  machine_.command("wbinfo", "", 1, recording("domain/wbinfo-u-no-winbindd.stderr"));
  const Ended ended = wbinfo("-z");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, recording("domain/wbinfo-u-no-winbindd.stderr"));
}

TEST_F(Wbinfo, EveryOtherOptionIsTheStockOnes) {
  const Ended ended = wbinfo("-u --domain 'A B'");
  EXPECT_EQ(ended.status, 7);
  EXPECT_EQ(ended.out, recording("domain/wbinfo-u.stdout"));
  EXPECT_EQ(ended.err, "stock\n");
  EXPECT_EQ(transcript(), "wbinfo -u --domain A B\n");
}

TEST_F(Wbinfo, WithoutTheStockOneItSaysSo) {
  machine_.no_command("wbinfo");
  const Ended ended = wbinfo("-u");
  EXPECT_EQ(ended.status, 127);
  EXPECT_EQ(ended.err, "wbinfo: winbind is not installed\n");
}

// ---- What the library exports

TEST(PlatformLibrary, ExportsTheNamesOfItsHeaderOnly) {
  const Ended ended = shell("nm -D --defined-only " PLATFORM_LIBRARY
                            " | sed 's/.* //; s/@.*//' | grep -v '^NASPLATFORM_1$' | sort | tr '\\n' ' '");
  EXPECT_EQ(ended.out,
            "MODX_COMMAND MODX_FreeAllXml MODX_ReadAllXml p_lib_list xml_get_int xml_get_str xml_set_str ");
}

} // namespace
} // namespace nasshare::tests
