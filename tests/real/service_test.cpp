// The service commands: smbd starts, takes changes and ends.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "samba_machine.h"

#include <algorithm>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *smbd_conf = "/run/samba/smbd.conf";

class Service : public SambaMachine {
protected:
  void serve_music() {
    add(music());
    start();
  }
  static Share music() {
    return Share{"Music"}.path("/mnt/HD/HD_a2/Music").everyone().oplocks("yes").map_archive("no");
  }
};

// Every process of the machine whose program is one of Samba's.
std::string samba_processes() {
  return shell("ps -e -o pid=,args= | grep -E '[s]mbd|[s]amba-|[r]pcd_|[n]mbd|[w]inbindd'").out;
}

TEST_F(Service, SmbConfStaysAsItWasGenerated) {
  add(music());
  const std::string generated = read_file(smb_conf);
  start();
  EXPECT_EQ(read_file(smb_conf), generated);
  EXPECT_NE(generated.find("\n[ Music ]\n"), std::string::npos);
}

TEST_F(Service, SmbdUnderstandsEveryOptionThatItIsGiven) {
  serve_music();
  const Ended checked = shell(std::string("testparm -s ") + smbd_conf);
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.err.find("nknown parameter"), std::string::npos) << checked.err;
}

// One yes-or-no option without either makes Samba refuse a whole file.
TEST_F(Service, AShareWithoutYesOrNoIsServedLikeAnyOther) {
  add(music().oplocks("").map_archive("perhaps"));
  start();
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, AFileThatSambaRefusesDoesNotReplaceTheOneItHas) {
  serve_music();
  const std::string taken = read_file(smbd_conf);
  ASSERT_EQ(
      shell("echo 'max log size = lots' >>/etc/samba/smb.conf; echo '[ broken' >>/etc/samba/smb.conf").status,
      0);
  const Ended ended = shell("smb start");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err, "smb: Samba cannot take /etc/samba/smb.conf (see testparm /etc/samba/smb.conf)\n");
  EXPECT_EQ(read_file(smbd_conf), taken);
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, AShareThatIsAddedIsServedAtOnce) {
  serve_music();
  add(Share{"Films"}.path("/mnt/HD/HD_b2/Films").read("#alice#"));
  EXPECT_EQ(access("alice", "Films"), "read");
}

TEST_F(Service, AShareThatIsDeletedIsGoneAtOnceAndItsFilesStay) {
  serve_music();
  EXPECT_EQ(access("alice", "Music"), "write");
  ASSERT_EQ(del_share("Music"), 1);
  EXPECT_EQ(access("alice", "Music"), "no such share");
  EXPECT_TRUE(exists("/mnt/HD/HD_a2/Music/welcome.txt"));
}

TEST_F(Service, StopLeavesNoProcessBehind) {
  serve_music();
  EXPECT_EQ(served_shares(), Names{"Music"});
  EXPECT_NE(samba_processes(), "");
  EXPECT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(samba_processes(), "");
}

TEST_F(Service, StopEndsTheServiceUnderAConnectedClient) {
  serve_music();
  shell("(echo '!touch /tmp/connected'; exec sleep 30) | smbclient -s /dev/null -N //127.0.0.1/Music "
        ">/dev/null 2>&1 &");
  ASSERT_EQ(shell("timeout 10 sh -c 'until [ -e /tmp/connected ]; do sleep 0.1; done'").status, 0);
  EXPECT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(samba_processes(), "");
}

TEST_F(Service, StopLeavesOtherSmbdsAlone) {
  serve_music();
  shell("cp /bin/sleep /tmp/smbd; /tmp/smbd 60 >/dev/null 2>&1 & echo $! >/tmp/other");
  EXPECT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(shell("kill -0 $(cat /tmp/other)").status, 0);
  shell("kill $(cat /tmp/other)");
}

TEST_F(Service, StopWithoutStartIsNoFailure) {
  EXPECT_EQ(shell("smb stop").status, 0);
}

TEST_F(Service, StartTwiceKeepsOneSmbdThatHasTheNewestFile) {
  serve_music();
  const std::string running = read_file("/run/samba/nasshare-smbd");
  ASSERT_EQ(shell("sed -i 's/^\\[ Music \\]$/[ Songs ]/' /etc/samba/smb.conf").status, 0);
  EXPECT_EQ(shell("smb start").status, 0);
  EXPECT_EQ(read_file("/run/samba/nasshare-smbd"), running);
  EXPECT_EQ(access("alice", "Songs"), "write");
  EXPECT_EQ(access("alice", "Music"), "no such share");
}

TEST_F(Service, StartAfterStopServesAgain) {
  serve_music();
  ASSERT_EQ(shell("smb stop").status, 0);
  ASSERT_EQ(shell("smb start").status, 0);
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, StartAfterACrashServesAgain) {
  serve_music();
  ASSERT_EQ(shell("kill -9 $(cut -d' ' -f1 /run/samba/nasshare-smbd)").status, 0);
  const Ended started = shell("smb start");
  ASSERT_EQ(started.status, 0) << started.err;
  EXPECT_EQ(access("alice", "Music"), "write");
  ASSERT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(samba_processes(), "");
}

std::string smbd_pid() {
  return shell("cut -d' ' -f1 /run/samba/nasshare-smbd | tr -d '\\n'").out;
}

TEST_F(Service, StartWhereSomebodyElseHasThePortFails) {
  add(music());
  shell("nohup python3 -c 'import socket, time; s = socket.socket(); s.bind((\"0.0.0.0\", 445)); s.listen(); "
        "t = socket.socket(socket.AF_INET6); t.setsockopt(41, 26, 1); t.bind((\"::\", 445)); t.listen(); "
        "time.sleep(60)' >/dev/null 2>&1 & echo $! >/tmp/other");
  ASSERT_EQ(shell("timeout 10 sh -c 'until grep -q :01BD /proc/net/tcp; do sleep 0.1; done'").status, 0);
  const Ended ended = shell("smb start");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err, "smb: smbd does not answer; see /var/log/samba/log.smbd\n");
  EXPECT_EQ(samba_processes(), "");
  shell("kill $(cat /tmp/other)");
}

TEST_F(Service, SmbdHasNothingOfItsStarter) {
  add(music());
  ASSERT_EQ(shell("cd /tmp && SECRET=word bash -c 'smb start 7</etc/passwd 12</etc/group'").status, 0);
  const std::string process = "/proc/" + smbd_pid();
  EXPECT_EQ(shell("readlink " + process + "/cwd").out, "/\n");
  EXPECT_EQ(shell("grep -c SECRET " + process + "/environ").out, "0\n");
  EXPECT_EQ(shell("readlink " + process + "/fd/* | grep -cE '^/etc/(passwd|group)|service.lock'").out, "0\n");
}

TEST_F(Service, StartUnderAnyMaskShutsNothingAndLeavesNothingForOthersToWrite) {
  for (const char *mask : {"0", "077"}) {
    SCOPED_TRACE(mask);
    Appliance{}.remove("/run/samba").remove(smb_conf);
    ASSERT_EQ(shell(std::string("umask ") + mask + "; smb start").status, 0);
    EXPECT_EQ(mode("/run/samba"), 0755U);
    EXPECT_EQ(mode(smbd_conf), 0644U);
    EXPECT_EQ(mode(smb_conf), 0644U);
    EXPECT_EQ(mode("/run/samba/nasshare-smbd"), 0644U);
    ASSERT_EQ(shell("smb stop").status, 0);
  }
}

TEST_F(Service, StartGeneratesAnEmptySmbConfAnew) {
  ASSERT_NO_FATAL_FAILURE(add(music()));
  Appliance{}.file(smb_conf, "");
  start();
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, StartServesAChangeThatWasKilledBeforeItWasPublished) {
  add(music());
  const std::string old = read_file(smb_conf);
  ASSERT_EQ(shell("nasshare modify Music --deny bob").status, 0);
  Appliance{}.file(smb_conf, old);
  start();
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access("bob", "Music"), "denied");
}

TEST_F(Service, StartServesTheOldFileWhereTheCatalogueCannotBeRead) {
  add(music());
  Appliance{}.mtab("");
  const Ended started = shell("smb start");
  EXPECT_EQ(started.status, 0);
  EXPECT_EQ(started.err, "nasshare: no data volume is mounted, or no disk is in a bay\n"
                         "smbcom: /etc/samba/smb.conf was not generated\n");
  EXPECT_EQ(served_shares(), Names{"Music"});
}

// Samba would take the double quote away, and serve the folder of another share.
TEST_F(Service, AShareWhosePathSambaReadsAsAnotherIsNotServed) {
  add(Share{"Secret"}.path("/mnt/HD/HD_a2/priv").write("#alice#").oplocks("yes").map_archive("no"));
  folder("/mnt/HD/HD_a2/priv\"");
  ASSERT_EQ(add_share(Share{"Open"}.path("/mnt/HD/HD_a2/priv\"").everyone().oplocks("yes").map_archive("no")),
            1);
  start();
  EXPECT_EQ(access("bob", "Secret"), "denied");
  EXPECT_EQ(access("bob", "Open"), "no such share");
}

// Whoever may read a lock can hold it, and keep changes from being published.
TEST_F(Service, NoUserOfTheMachineCanHoldALock) {
  Appliance{}.folder("/etc/dfsroot", 0700);
  shell("rm -f /run/nasshare*.lock");
  ASSERT_EQ(shell("smb start").status, 0);
  add(music());
  EXPECT_EQ(shell("find /run -maxdepth 1 -name '*.lock' -perm /077").out, "");
  EXPECT_EQ(
      shell("ls /run/nasshare-service.lock /run/nasshare-in-place.lock /run/nasshare-dfs-tree.lock").status,
      0);
}

TEST_F(Service, StartOpensADfsTreeWhoseRebuildWasKilled) {
  Appliance{}.folder("/etc/dfsroot", 0700);
  ASSERT_EQ(shell("smb start").status, 0);
  EXPECT_EQ(mode("/etc/dfsroot"), 0777U);
}

TEST_F(Service, StartEndsWhatAKilledStartLeft) {
  serve_music();
  ASSERT_EQ(shell("sed -i 's/^[0-9]*/-/' /run/samba/nasshare-smbd").status, 0); // before it knew the process
  EXPECT_EQ(shell("smb start").status, 0);
  EXPECT_EQ(shell("ps -e -o pid=,sid=,args= | awk '$1 == $2 && $3 == \"smbd\"' | wc -l").out, "1\n");
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(samba_processes(), "");
}

TEST_F(Service, TwoStartsAtOnceLeaveOneSmbd) {
  add(music());
  ASSERT_EQ(shell("smb start & smb start; wait $!").status, 0);
  EXPECT_EQ(shell("ps -e -o pid=,sid=,args= | awk '$1 == $2 && $3 == \"smbd\"' | wc -l").out, "1\n");
}

TEST_F(Service, TwelveSmbcomsAtOnceEndWithAllSharesServed) {
  serve_music();
  Names names{"Music"};
  for (int i = 1; i <= 12; ++i) {
    const std::string name = "Films" + std::to_string(i);
    folder("/mnt/HD/HD_b2/" + name);
    names.push_back(name);
  }
  ASSERT_EQ(shell("for i in 1 2 3 4 5 6 7 8 9 10 11 12; do "
                  "nasshare add Films$i /mnt/HD/HD_b2/Films$i --write everyone >/dev/null & done; wait")
                .status,
            0);
  std::ranges::sort(names);
  EXPECT_EQ(served_shares(), names);
  EXPECT_EQ(shell("ls /run/samba | grep -c 'smbd.conf.'").out, "0\n");
}

TEST_F(Service, StartGeneratesSmbConfWhereThereIsNone) {
  ASSERT_NO_FATAL_FAILURE(add(music()));
  Appliance{}.remove(smb_conf);
  start();
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, StartWithoutAGuestAccountIsRefused) {
  add(music());
  ASSERT_EQ(shell("sed -i /^nobody:/d /etc/passwd").status, 0);
  const Ended started = shell("smb start");
  EXPECT_EQ(started.status, 1);
  EXPECT_EQ(started.err, "smb: the guest account \"nobody\" does not exist\nsmb: smbd was not started\n");
  EXPECT_EQ(samba_processes(), "");
}

TEST_F(Service, StartThatFailsLeavesNoProcessBehind) {
  add(music());
  Appliance{}
      .file("/run/samba/smbd.pid", "")
      .remove("/var/lib/samba/private")
      .file("/var/lib/samba/private", "");
  EXPECT_EQ(shell("smb start").status, 1);
  EXPECT_EQ(samba_processes(), "");
}

TEST_F(Service, TheAccountsLieInTheFileThatSmbConfNames) {
  serve_music();
  EXPECT_EQ(shell("cut -d: -f1 /etc/samba/smbpasswd").out, "alice\nbob\ncarol\n");
  EXPECT_EQ(mode("/etc/samba/smbpasswd"), 0600U);
}

TEST_F(Service, SmbcomWithoutArgumentsHasARunningSmbdTakeTheCatalogue) {
  serve_music();
  ASSERT_EQ(shell("sed -i 's/^\\[ Music \\]$/[ Songs ]/' /etc/samba/smb.conf; smb start").status, 0);
  ASSERT_EQ(access("alice", "Music"), "no such share");
  EXPECT_EQ(shell("smbcom").status, 0);
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Service, SmbcomGenerateOnlyLeavesSmbdAsItIs) {
  serve_music();
  const std::string generated = read_file(smb_conf);
  ASSERT_EQ(shell("sed -i 's/^\\[ Music \\]$/[ Songs ]/' /etc/samba/smb.conf; smb start").status, 0);
  EXPECT_EQ(shell("smbcom -g").status, 0);
  EXPECT_EQ(read_file(smb_conf), generated);
  EXPECT_EQ(access("alice", "Songs"), "write");
}

TEST_F(Service, SmbcmdHasSmbdTakeTheFileAsItIs) {
  serve_music();
  ASSERT_EQ(shell("sed -i 's/^\\[ Music \\]$/[ Songs ]/' /etc/samba/smb.conf").status, 0);
  const Ended ended = shell("smbcmd -l");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out + ended.err, "");
  EXPECT_EQ(access("alice", "Songs"), "write");
}

} // namespace
} // namespace nasshare::tests
