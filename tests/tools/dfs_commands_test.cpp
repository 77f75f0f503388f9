// nasshare dfs, dfs-group and dfs-tree.
#include "dfs_files.h"
#include "nasshare_cli.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

// A group "media" with the link "tunes".
class Dfs : public testing::Test {
protected:
  Dfs() {
    succeed({"dfs-group", "add", "media"});
    succeed({"dfs", "add", "media", "tunes", "srv1", "music"});
  }

  static std::string links() { return nasshare({"dfs", "list"}).out; }
  static std::string groups() { return nasshare({"dfs-group", "list"}).out; }

  Appliance machine_;
};

TEST(DfsEmpty, NothingIsListed) {
  succeed({"dfs", "list"});
  succeed({"dfs-group", "list"});
}

// ---- Links

TEST_F(Dfs, ListPrintsGroupLocalHostAndShare) {
  succeed({"dfs", "add", "media", "R&B (old)", "10.0.0.1", "R&B"});
  EXPECT_EQ(links(), "media\ttunes\tsrv1\tmusic\nmedia\tR&B (old)\t10.0.0.1\tR&B\n");
}

TEST_F(Dfs, AddOfALinkThatTheGroupHasIsRefused) {
  expect_refusal({"dfs", "add", "media", "tunes", "srv2", "other"},
                 "the DFS group \"media\" has a link named \"tunes\"");
  EXPECT_EQ(links(), "media\ttunes\tsrv1\tmusic\n");
}

TEST_F(Dfs, AddToAnUnknownGroupIsRefused) {
  expect_refusal({"dfs", "add", "office", "tunes", "srv1", "music"}, "no DFS group is named \"office\"");
}

TEST_F(Dfs, ModifyKeepsWhatIsNotGiven) {
  succeed({"dfs", "modify", "media", "tunes", "--host", "srv2"});
  EXPECT_EQ(links(), "media\ttunes\tsrv2\tmusic\n");
  succeed({"dfs", "modify", "media", "tunes"});
  EXPECT_EQ(links(), "media\ttunes\tsrv2\tmusic\n");
}

TEST_F(Dfs, ModifyTakesEveryOption) {
  succeed({"dfs-group", "add", "office"});
  succeed({"dfs", "modify", "media", "tunes", "--group", "office", "--local", "papers", "--host", "srv2",
           "--share", "docs"});
  EXPECT_EQ(links(), "office\tpapers\tsrv2\tdocs\n");
}

TEST_F(Dfs, ModifyOntoAnotherLinkIsRefused) {
  succeed({"dfs", "add", "media", "films", "srv1", "films"});
  expect_refusal({"dfs", "modify", "media", "films", "--local", "tunes"},
                 "the DFS group \"media\" has a link named \"tunes\"");
  expect_refusal({"dfs", "modify", "media", "films", "--group", "office"},
                 "no DFS group is named \"office\"");
  EXPECT_EQ(links(), "media\ttunes\tsrv1\tmusic\nmedia\tfilms\tsrv1\tfilms\n");
}

TEST_F(Dfs, DeleteRemovesThatLinkOnly) {
  succeed({"dfs-group", "add", "office"});
  succeed({"dfs", "add", "office", "tunes", "srv1", "music"});
  succeed({"dfs", "delete", "media", "tunes"});
  EXPECT_EQ(links(), "office\ttunes\tsrv1\tmusic\n");
}

TEST_F(Dfs, WhatIsNotThereIsRefused) {
  for (const std::string command : {"delete", "modify"}) {
    expect_refusal({"dfs", command, "media", "films"}, "the DFS group \"media\" has no link named \"films\"");
    expect_refusal({"dfs", command, "tunes", "media"}, "the DFS group \"tunes\" has no link named \"media\"");
  }
}

TEST_F(Dfs, CharactersThatTheTreeCannotHoldAreRefused) {
  const std::string before = read_file(link_path);
  for (const char character : std::string("\"\\|<>*?!~/")) {
    const std::string bad = std::string("a") + character + "b";
    const std::string reason = std::string(" cannot hold \"") + character + "\"";
    expect_refusal({"dfs-group", "add", bad}, "the group" + reason);
    expect_refusal({"dfs", "add", bad, "x", "srv1", "music"}, "the group" + reason);
    expect_refusal({"dfs", "add", "media", bad, "srv1", "music"}, "the link's name" + reason);
    expect_refusal({"dfs", "add", "media", "x", bad, "music"}, "the host" + reason);
    expect_refusal({"dfs", "modify", "media", "tunes", "--share", bad}, "the share" + reason);
  }
  expect_refusal({"dfs", "add", "media", "x", "srv1", "a,b"}, "the share cannot hold \",\"");
  expect_refusal({"dfs", "add", "media", "x", "a&#124;b", "music"}, "the host cannot hold \"&\"");
  expect_refusal({"dfs", "add", "media", "x\ny", "srv1", "music"},
                 "the link's name holds a line end or another control character");
  expect_refusal({"dfs", "add", "media", "..", "srv1", "music"}, "the link's name cannot be \"..\"");
  expect_refusal({"dfs", "add", "media", "x", "", "music"}, "the host is empty");
  EXPECT_EQ(read_file(link_path), before);
}

TEST_F(Dfs, ANameThatDoesNotFitIsRefused) {
  const std::string name(512, 'n');
  expect_refusal({"dfs", "add", "media", name, "srv1", "music"}, "the link \"" + name + "\" was not added");
  expect_refusal({"dfs-group", "add", name}, "the DFS group \"" + name + "\" was not added");
}

// ---- Groups

TEST_F(Dfs, GroupsAreListedInTheirOrder) {
  succeed({"dfs-group", "add", "R&D"});
  succeed({"dfs-group", "add", "archive"});
  EXPECT_EQ(groups(), "media\nR&D\narchive\n");
}

TEST_F(Dfs, AddOfAGroupThatExistsIsRefused) {
  expect_refusal({"dfs-group", "add", "media"}, "a DFS group named \"media\" exists");
  EXPECT_EQ(groups(), "media\n");
}

TEST_F(Dfs, RenamingAGroupMovesItsLinks) {
  succeed({"dfs-group", "rename", "media", "R&B media"});
  EXPECT_EQ(groups(), "R&B media\n");
  EXPECT_EQ(links(), "R&B media\ttunes\tsrv1\tmusic\n");
}

TEST_F(Dfs, RenamingOntoAnotherGroupIsRefused) {
  succeed({"dfs-group", "add", "office"});
  expect_refusal({"dfs-group", "rename", "media", "office"}, "a DFS group named \"office\" exists");
  EXPECT_EQ(groups(), "media\noffice\n");
}

TEST_F(Dfs, DeletingAGroupDeletesItsLinks) {
  succeed({"dfs-group", "add", "office"});
  succeed({"dfs", "add", "office", "papers", "srv1", "docs"});
  succeed({"dfs-group", "delete", "media"});
  EXPECT_EQ(groups(), "office\n");
  EXPECT_EQ(links(), "office\tpapers\tsrv1\tdocs\n");
}

TEST_F(Dfs, AnUnknownGroupIsRefused) {
  expect_refusal({"dfs-group", "delete", "office"}, "no DFS group is named \"office\"");
  expect_refusal({"dfs-group", "rename", "office", "x"}, "no DFS group is named \"office\"");
}

// ---- The tree

TEST_F(Dfs, TheTreeHoldsALinkPerEntry) {
  machine_.config("/system_mgr/samba/dfs_enable", "1");
  succeed({"dfs", "add", "media", "my films", "srv2", "films $1"});
  succeed({"dfs-tree"});
  EXPECT_EQ(names_in("/etc/dfsroot/media"), (Names{"my films", "tunes"}));
  EXPECT_EQ(std::filesystem::read_symlink("/etc/dfsroot/media/tunes"), "msdfs:srv1\\music");
  EXPECT_EQ(std::filesystem::read_symlink("/etc/dfsroot/media/my films"), "msdfs:srv2\\films $1");
}

TEST_F(Dfs, SwitchedOffTheTreeStays) {
  machine_.file("/etc/dfsroot/old/file", "");
  expect_refusal({"dfs-tree"},
                 "DFS is switched off (/system_mgr/samba/dfs_enable); /etc/dfsroot stays as it is");
  EXPECT_TRUE(exists("/etc/dfsroot/old/file"));
  EXPECT_FALSE(exists("/etc/dfsroot/media"));
}

TEST(DfsUsage, IsExplained) {
  for (const std::vector<std::string> &words : {std::vector<std::string>{"dfs"}, {"dfs", "show"}}) {
    expect_wrong_usage(words, "usage: nasshare dfs list|add|modify|delete ...");
  }
  expect_wrong_usage({"dfs", "list", "x"}, "usage: nasshare dfs list");
  expect_wrong_usage({"dfs", "add", "media", "tunes", "srv1"},
                     "usage: nasshare dfs add GROUP LOCAL HOST SHARE");
  expect_wrong_usage({"dfs", "modify", "media"}, "usage: nasshare dfs modify GROUP LOCAL [OPTION]...");
  expect_wrong_usage({"dfs", "modify", "media", "tunes", "--name", "x"}, "\"--name\" is no option of modify");
  expect_wrong_usage({"dfs", "delete", "media"}, "usage: nasshare dfs delete GROUP LOCAL");
  for (const std::vector<std::string> &words : {std::vector<std::string>{"dfs-group"}, {"dfs-group", "x"}}) {
    expect_wrong_usage(words, "usage: nasshare dfs-group list|add|rename|delete ...");
  }
  expect_wrong_usage({"dfs-group", "list", "x"}, "usage: nasshare dfs-group list");
  expect_wrong_usage({"dfs-group", "add"}, "usage: nasshare dfs-group add GROUP");
  expect_wrong_usage({"dfs-group", "rename", "media"}, "usage: nasshare dfs-group rename GROUP NEW");
  expect_wrong_usage({"dfs-group", "delete"}, "usage: nasshare dfs-group delete GROUP");
  expect_wrong_usage({"dfs-tree", "x"}, "usage: nasshare dfs-tree");
}

} // namespace
} // namespace nasshare::tests
