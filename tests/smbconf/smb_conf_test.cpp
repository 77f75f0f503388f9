// The whole smb.conf, and how it is replaced.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"
#include "smb_conf.h"

#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

std::string golden(const std::string &name) {
  return read_file(PROJECT_FOLDER "/tests/smbconf/golden/" + name);
}

// ---- Whole files

TEST(SmbConf, OfAnEmptyCatalogueIsTheGlobalSection) {
  outside_a_domain();
  EXPECT_EQ(generated(), golden("user-mode-empty.conf"));
}

TEST(SmbConf, OfAnEmptyCatalogueInADomain) {
  in_the_domain();
  EXPECT_EQ(generated(), golden("domain-mode-empty.conf"));
}

TEST(SmbConf, OfSharesOnTwoVolumesAndAUsbDisk) {
  Appliance{}
      .folder("/mnt/HD_a4")
      .folder("/mnt/HD_b4")
      .folder("/mnt/HD/HD_a2")
      .folder("/mnt/HD/HD_b2")
      .folder("/mnt/USB/usb1 (x)")
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_b2/a/docs\" *(rw)\n");
  outside_a_domain();
  volumes_present(1, 1);
  pss->dfs_enable = 1;
  Insert_Smb_Node(
      Share{"Volume_1"}.path("/mnt/HD/HD_a2").oplocks("yes").map_archive("no").everyone().recycle(1));
  Insert_Smb_Node(Share{"Music & Films"}
                      .comment("Songs; 100%s loud")
                      .path("/mnt/HD/HD_a2/music/")
                      .browseable("no")
                      .oplocks("no")
                      .map_archive("yes")
                      .read("#alice#")
                      .write("#@staff#")
                      .deny("#carol#")
                      .recycle(1, 1));
  Insert_Smb_Node(Share{"Docs"}
                      .comment("Contracts")
                      .path("/mnt/HD/HD_b2/a/docs")
                      .oplocks("yes")
                      .map_archive("no")
                      .deny("#bob#"));
  Insert_Smb_Node(Share{"B\u00fccher"}
                      .comment("Zum Lesen")
                      .path("/mnt/HD/HD_b2/b\u00fccher")
                      .oplocks("yes")
                      .map_archive("yes")
                      .read("#nobody#,#@allaccount#"));
  Insert_Smb_Node(Share{"USBDisk1_1"}
                      .comment("USB disk")
                      .path("/mnt/USB/usb1 (x)")
                      .oplocks("yes")
                      .map_archive("no")
                      .everyone());
  EXPECT_EQ(generated(), golden("user-mode.conf"));
}

TEST(SmbConf, OfSharesInADomain) {
  Appliance{}
      .folder("/mnt/HD_b4")
      .folder("/mnt/HD/HD_b2")
      .command("wbinfo")
      .group("Domain Users", 10000)
      .user("john doe", 10001, 10000);
  in_the_domain();
  volumes_present(0, 1);
  pss->dfs_enable = 1;
  Insert_Smb_Node(
      Share{"Public"}.path("/mnt/HD/HD_b2").oplocks("yes").map_archive("no").everyone().recycle(1, 1));
  Insert_Smb_Node(Share{"Projects"}
                      .comment("For the domain")
                      .path("/mnt/HD/HD_b2/work/projects")
                      .oplocks("yes")
                      .map_archive("yes")
                      .read("#alice#")
                      .write("#@Domain Users#,#john doe#")
                      .deny("#carol#,#dave#")
                      .recycle(1));
  Insert_Smb_Node(
      Share{"Former"}.path("/mnt/HD/HD_a2/former").oplocks("no").map_archive("no").read("#dave#"));
  EXPECT_EQ(generated(), golden("domain-mode.conf"));
}

// ---- The file

TEST(SmbConf, IsRewrittenWholeAndInPlace) {
  Appliance{}.file(smb_conf, std::string(100000, '#'));
  outside_a_domain();
  const ino_t before = inode(smb_conf);
  EXPECT_EQ(generated(), golden("user-mode-empty.conf"));
  EXPECT_EQ(inode(smb_conf), before);
  EXPECT_EQ(names_in("/etc/samba"), Names{"smb.conf"});
}

TEST(SmbConf, IsTheSameTheSecondTime) {
  outside_a_domain();
  EXPECT_EQ(generated(), golden("user-mode-empty.conf"));
  EXPECT_EQ(generated(), golden("user-mode-empty.conf"));
}

TEST(SmbConf, ThatCannotBeOpenedAnswersZeroAndNothingElseHappens) {
  Appliance{}.remove("/etc/samba").folder("/mnt/HD/HD_a2").folder("/mnt/USB/x", 0700);
  outside_a_domain();
  volumes_present(1, 1);
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music/").read("#alice#").recycle(1));
  Insert_Smb_Node(Share{"Usb"}.path("/mnt/USB/x").everyone());
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_FALSE(exists("/etc/samba"));
  EXPECT_STREQ(pss->head->read_list, "#alice#");
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/music/");
  EXPECT_EQ(pss->vol_recycle[0], 0);
  EXPECT_FALSE(exists("/mnt/HD/HD_a2/recycle"));
}

TEST(SmbConf, ThatCannotBeWrittenIsReported) {
  ASSERT_EQ(mount("small", "/etc/samba", "tmpfs", 0, "size=4096"), 0);
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").read(std::string(12287, 'x')));
  EXPECT_NE(create_smb_conf(), 0);
}

// Half a file would show shares without their lists.
TEST(SmbConf, ThatHasNoRoomStaysAsItWas) {
  ASSERT_EQ(mount("small", "/etc/samba", "tmpfs", 0, "size=8192"), 0);
  Appliance{}.file(smb_conf, "old");
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").read(std::string(12287, 'x')));
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
}

TEST(SmbConf, ThatIsShorterHasNothingOfTheOldOneBehindIt) {
  outside_a_domain();
  Appliance{}.file(smb_conf, std::string(100000, 'x'));
  EXPECT_EQ(generated(), golden("user-mode-empty.conf"));
}

TEST(SmbConf, IsNeverForOthersToWrite) {
  umask(0);
  Appliance{}.remove(smb_conf);
  outside_a_domain();
  generated();
  EXPECT_EQ(mode(smb_conf), 0664U);
}

// Two texts written at once would be mixed.
TEST(SmbConf, IsNotWrittenWhileAnotherProgramWritesIt) {
  Appliance{}.file(smb_conf, "old");
  const int other = open("/run/nasshare-in-place.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(flock(other, LOCK_EX), 0);
  const pid_t program = fork();
  if (program == 0) {
    _exit(create_smb_conf());
  }
  usleep(300000);
  EXPECT_EQ(read_file(smb_conf), "old");
  EXPECT_EQ(flock(other, LOCK_UN), 0);
  int status = -1;
  EXPECT_EQ(waitpid(program, &status, 0), program);
  EXPECT_EQ(status, 0);
  EXPECT_NE(read_file(smb_conf), "old");
  close(other);
}

// A share that is listed while winbind is asked, when another program does its part; whether smb.conf is
// written.
int written_while(const std::string &another_program_runs, bool is_possible) {
  Appliance{}.remove(smb_conf).folder("/mnt/HD/HD_a2").script("wbinfo", another_program_runs);
  in_the_domain();
  volumes_present(1, 0);
  put(pss->ads_workgroup, std::string(is_possible ? 4 : 500, 'W'));
  std::string denied = "#alice#";
  while (denied.size() < 1000) {
    denied += ",#bob#";
  }
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").write("#carol#").deny(denied).recycle(1));
  return create_smb_conf();
}

TEST(SmbConf, ThatAnotherProgramWroteMeanwhileIsNotTakenAwayByAFailure) {
  EXPECT_EQ(written_while("echo '[ global ]' >/etc/samba/smb.conf", false), -1);
  EXPECT_EQ(read_file(smb_conf), "[ global ]\n");
}

TEST(SmbConf, ThatAnotherProgramPutThereMeanwhileIsNotTakenAwayByAFailure) {
  EXPECT_EQ(written_while("rm /etc/samba/smb.conf; : >/etc/samba/new; mv /etc/samba/new /etc/samba/smb.conf",
                          false),
            -1);
  EXPECT_EQ(read_file(smb_conf), "");
}

TEST(SmbConf, ThatNobodyFilledIsGoneAfterAFailure) {
  EXPECT_EQ(written_while("", false), -1);
  EXPECT_FALSE(exists(smb_conf));
}

// Its writer failed, and took the empty file away that it had made.
TEST(SmbConf, ThatAnotherProgramTookAwayMeanwhileIsWritten) {
  EXPECT_EQ(written_while("rm /etc/samba/smb.conf", true), 0);
  EXPECT_NE(read_file(smb_conf).find("[ Music ]\n"), std::string::npos);
}

// What is opened takes the place of the closed ones.
TEST(SmbConf, HoldsNoTraceWhereStandardStreamsAreClosed) {
  Appliance{}
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_b2\" *\n\"/mnt/HD/HD_a2/music\" *\n");
  outside_a_domain();
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").everyone());
  const std::string text = generated();
  const Ended ended = run_to_exit([] {
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // printed at once
    smb_dbg_flag = 1;
    create_smb_conf();
    std::fflush(nullptr);
    _exit(7);
  });
  EXPECT_EQ(ended.status, 7);
  EXPECT_EQ(read_file(smb_conf), text);
  EXPECT_EQ(read_file("/run/nasshare-in-place.lock"), "");
}

// The catalogue refuses line ends, but a disk from elsewhere may bring them.
TEST(SmbConf, ALineEndInAValueBeginsNoOptionOfItsOwn) {
  Insert_Smb_Node(Share{"a\n[b]"}
                      .comment("x\nroot preexec = touch /tmp/x")
                      .path("/mnt/HD/HD_a2/a\r\nb")
                      .oplocks("y\nx")
                      .map_archive("n\nx"));
  const std::string text = generated_sections();
  EXPECT_NE(text.find("[ a [b] ]\ncomment = x root preexec = touch /tmp/x\npath = /mnt/HD/HD_a2/a  b\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("oplocks = y x\nmap archive = n x\n"), std::string::npos) << text;
}

TEST(SmbConf, FileServicesArePrintedWhenTheDebugFlagIsOne) {
  const struct {
    const char *afp, *nfs, *printed;
  } rows[] = {
      {"0", "0", "afp nfs state is [0][0]\n"},  {"1", "0", "afp nfs state is [1][0]\n"},
      {"0", "1", "afp nfs state is [0][1]\n"},  {"1", "1", "afp nfs state is [1][1]\n"},
      {"2", "-1", "afp nfs state is [0][0]\n"},
  };
  for (const auto &row : rows) {
    Appliance{}.config("/system_mgr/afp/enable", row.afp).config("/system_mgr/nfs/enable", row.nfs);
    expect_trace([] { create_smb_conf(); }, row.printed);
  }
}

TEST(SmbConf, FileServicesArePrintedThoughTheFileCannotBeOpened) {
  Appliance{}.remove("/etc/samba");
  expect_trace([] { create_smb_conf(); }, "afp nfs state is [0][0]\n");
}

TEST(SmbConf, LeavesTheCatalogueLoaded) {
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").everyone());
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(pss->count, 1);
  EXPECT_STREQ(pss->head->name, "Music");
}

} // namespace
} // namespace nasshare::tests
