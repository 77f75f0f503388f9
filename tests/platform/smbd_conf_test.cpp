// The file that smbd reads, derived from the generated smb.conf.
#include "appliance.h"
#include "output.h"
#include "paths.h"
#include "service_commands.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace nasshare::tests {
namespace {

constexpr const char *smbd_conf = "/run/samba/smbd.conf";

class SmbdConf : public testing::Test {
protected:
  void SetUp() override {
    machine_.folder("/run/samba").command("testparm", "", 0, recording("samba/testparm-local.stderr"));
  }

  static Ended derive() { return shell("here=" + commands + "; . $here/smbd_service.sh; derive_smbd_conf"); }

  std::string derived(const std::string &generated) {
    machine_.file(smb_conf, generated);
    const Ended ended = derive();
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
  EXPECT_EQ(derived("comment = x \\ \\\npath = /mnt\nworkgroup = W\\ \\\\\t\\ \n"),
            "comment = x\npath = /mnt\nworkgroup = W\n");
}

// Samba drops these at the end of a path, and serves the folder of another name.
TEST_F(SmbdConf, AShareWhosePathSambaReadsAsAnotherIsLeftOut) {
  const std::string kept = "[ Music ]\npath = /mnt/HD/HD_a2/My \"best\" music\ncomment = \"x\"\n\n";
  for (const std::string end : {" ", "\"", "\"\"", "\\", "\t", "\\ ", " \""}) {
    machine_.file(smb_conf, "[ global ]\nsecurity = user\n\n" + kept +
                                "[ Open ]\ncomment = \npath = /mnt/HD/HD_a2/a" + end + "\nwrite list =\n\n" +
                                kept);
    const Ended ended = derive();
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "sh: the share \"Open\" is left out: Samba would serve another folder\n");
    const std::string section = "[Music]" + kept.substr(kept.find('\n'));
    EXPECT_EQ(read_file(smbd_conf),
              "[global]\npassdb backend = smbpasswd\nusershare max shares = 0\nsecurity = user\n\n" +
                  section + section)
        << end;
  }
}

// In half a file a share is without its lists.
TEST_F(SmbdConf, AFileThatIsNotReadWholeReplacesNothing) {
  derived("[ Music ]\npath = /mnt\n");
  const std::string taken = read_file(smbd_conf);
  for (const char *end : {"kill -KILL $$", "exit 1", "exit 0"}) {
    machine_.script("cat", std::string("head -n 1 \"$1\"; ") + end);
    const Ended ended = derive();
    EXPECT_EQ(ended.status, 1) << end;
    EXPECT_EQ(ended.err, "sh: /etc/samba/smb.conf cannot be read whole\n");
    EXPECT_EQ(read_file(smbd_conf), taken) << end;
  }
}

TEST_F(SmbdConf, TheLockOfTheFileIsForNobodyElseToRead) {
  derived("[ Music ]\n");
  EXPECT_EQ(mode("/run/nasshare-in-place.lock"), 0600U);
  ASSERT_EQ(chmod("/run/nasshare-in-place.lock", 0644), 0);
  derived("[ Music ]\n");
  EXPECT_EQ(mode("/run/nasshare-in-place.lock"), 0600U);
}

TEST_F(SmbdConf, AFileOfEmptyLinesReplacesNothing) {
  derived("[ global ]\n");
  const std::string taken = read_file(smbd_conf);
  machine_.file(smb_conf, "\n\n\n\n");
  EXPECT_EQ(derive().status, 1);
  EXPECT_EQ(read_file(smbd_conf), taken);
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
  EXPECT_NE(derive().status, 0);
  EXPECT_EQ(read_file(smbd_conf), "[Music]\n");
  EXPECT_EQ(names_in("/run/samba"), Names{"smbd.conf"});
}

} // namespace
} // namespace nasshare::tests
