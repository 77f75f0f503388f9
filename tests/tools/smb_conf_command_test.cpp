// nasshare smb-conf: the shares that it publishes besides the catalogue's, and the DFS tree.
#include "domain.h"
#include "iso_catalogue.h"
#include "nasshare_cli.h"
#include "paths.h"
#include "running_program.h"

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace nasshare::tests {
namespace {

class SmbConf : public Nasshare {
protected:
  // The lines of a share's section in a freshly written file, up to the empty line behind it.
  static std::string section(const std::string &share) {
    const Ended ended = nasshare({"smb-conf"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    const std::string text = read_file(smb_conf);
    const std::size_t start = text.find("[ " + share + " ]\n");
    return start == std::string::npos ? "none" : text.substr(start, text.find("\n\n", start) + 1 - start);
  }
};

TEST_F(SmbConf, WritesTheFile) {
  add({"Music", "/mnt/HD/HD_a2/music", "--write", "alice"});
  const Ended ended = nasshare({"smb-conf"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out + ended.err, "");
  EXPECT_NE(read_file(smb_conf).find("[ Music ]\ncomment = \npath = /mnt/HD/HD_a2/music\n"),
            std::string::npos);
}

TEST_F(SmbConf, SaysWhenTheFileCannotBeWritten) {
  machine_.remove("/etc/samba");
  expect_refusal({"smb-conf"}, "/etc/samba/smb.conf cannot be written");
}

// A load that waited would replace what was published since.
TEST_F(SmbConf, WaitsForTheServiceCommandThatPublishes) {
  const std::string while_another_does = "flock /run/nasshare-service.lock ";
  EXPECT_EQ(run_program({"sh", "-c", while_another_does + "timeout 2 " NASSHARE_CLI " smb-conf"}).status,
            124);
  EXPECT_FALSE(exists(smb_conf));
  EXPECT_EQ(run_program(
                {"sh", "-c", while_another_does + "env NASSHARE_SERVICE_LOCK=held " NASSHARE_CLI " smb-conf"})
                .status,
            0);
  EXPECT_TRUE(exists(smb_conf));
}

TEST_F(SmbConf, IsNeverForOthersToWrite) {
  umask(0);
  succeed({"smb-conf"});
  EXPECT_EQ(mode(smb_conf), 0664U);
}

// Nobody is denied who does not fit.
TEST_F(SmbConf, ThatIsRefusedLeavesNoFileWhereThereWasNone) {
  configure_domain(machine_, {.workgroup = std::string(500, 'W')});
  std::string denied = "alice";
  for (int i = 0; i < 30; ++i) {
    const std::string name = "user" + std::to_string(i);
    machine_.user(name, 2000 + i, 500);
    denied += "," + name;
  }
  machine_.command("wbinfo");
  add({"Music", "/mnt/HD/HD_a2/music", "--write", "bob", "--deny", denied});
  expect_refusal({"smb-conf"}, "/etc/samba/smb.conf was not written whole");
  EXPECT_FALSE(exists(smb_conf));
}

TEST_F(SmbConf, TurnsOplocksOffForAnotherFileService) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  machine_.config("/system_mgr/afp/enable", "1");
  EXPECT_EQ(nasshare({"smb-conf"}).status, 0);
  EXPECT_NE(read_file(smb_conf).find("\noplocks = no\n"), std::string::npos);
}

// ---- Automatic shares

TEST_F(SmbConf, HoldsTheDownloadFolderOfTheP2pClient) {
  machine_.file("/etc/NAS_CFG/p2psettings.xml",
                "<p2p><settings><save_path>/mnt/HD/HD_b2/Downloads</save_path></settings></p2p>");
  EXPECT_EQ(section("P2P"), "[ P2P ]\n"
                            "comment = P2P Folder Share\n"
                            "path = /mnt/HD/HD_b2/P2P\n"
                            "browseable = yes\n"
                            "public = yes\n"
                            "oplocks = yes\n"
                            "map archive = no\n"
                            "read list = \n"
                            "write list = \"nobody\",\"@allaccount\"\n"
                            "invalid users = \n"
                            "valid users = \"nobody\",\"@allaccount\"\n");
}

TEST_F(SmbConf, HoldsTheFolderOfAnInstalledAmuleWhileTheAddOnServiceRuns) {
  machine_.file("/etc/NAS_CFG/packages.xml",
                "<packages><package><name>aMule</name><path>/mnt/HD/HD_b2/aMule</path></package></packages>");
  EXPECT_EQ(section("aMule"), "none");
  const RunningProgram service = waiting_program("/tmp/modx");
  EXPECT_NE(section("aMule").find("\npath = /mnt/HD/HD_b2/aMule\n"), std::string::npos);
}

TEST_F(SmbConf, HoldsMountedImagesForReadingOnly) {
  machine_.folder("/mnt/isoMount/film");
  mounted_images({{.name = "Film", .read_list = "#alice#", .invalid_users = "#carol#"}});
  EXPECT_EQ(section("Film"), "[ Film ]\n"
                             "comment = \n"
                             "path = /mnt/isoMount/film\n"
                             "browseable = yes\n"
                             "public = yes\n"
                             "oplocks = yes\n"
                             "map archive = no\n"
                             "read list = \"alice\"\n"
                             "write list = \n"
                             "invalid users = \"nobody\",\"carol\"\n"
                             "valid users = \"alice\"\n");
}

TEST_F(SmbConf, AShareOfTheCatalogueWinsOverAnAutomaticOneOfItsName) {
  machine_.file("/etc/NAS_CFG/p2psettings.xml", "<p2p><settings/></p2p>");
  add({"P2P", "/mnt/HD/HD_a2/music", "--comment", "Mine"});
  EXPECT_NE(section("P2P").find("\ncomment = Mine\npath = /mnt/HD/HD_a2/music\n"), std::string::npos);
}

TEST_F(SmbConf, AutomaticSharesAreNotStored) {
  machine_.file("/etc/NAS_CFG/p2psettings.xml", "<p2p><settings/></p2p>");
  EXPECT_NE(section("P2P"), "none");
  EXPECT_EQ(nasshare({"list"}).out, "");
}

// ---- DFS

TEST_F(SmbConf, TheDfsTreeIsMadeWhileDfsIsOn) {
  succeed({"dfs-group", "add", "media"});
  succeed({"dfs", "add", "media", "tunes", "srv1", "music"});
  succeed({"smb-conf"});
  EXPECT_FALSE(exists("/etc/dfsroot"));
  machine_.config("/system_mgr/samba/dfs_enable", "1");
  EXPECT_NE(section("DFS").find("\npath = /etc/dfsroot\n"), std::string::npos);
  EXPECT_EQ(std::filesystem::read_symlink("/etc/dfsroot/media/tunes"), "msdfs:srv1\\music");
}

} // namespace
} // namespace nasshare::tests
