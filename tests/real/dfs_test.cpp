// The DFS root as clients meet it: a link is followed to the share that it names.
#include "appliance.h"
#include "nasshare/dfs.h"
#include "samba_machine.h"

#include <string>

namespace nasshare::tests {
namespace {

class DfsRoot : public SambaMachine {
protected:
  // A share that alice may write and bob may read, the links, and smbd.
  void serve(const std::string &share = "Music") {
    Appliance{}.config("/system_mgr/samba/dfs_enable", "1");
    add(Share{share}.path("/mnt/HD/HD_a2/" + share).read("#bob#").write("#alice#"));
    create_dfs_link();
    start();
  }
};

void add_link(const char *share, const char *local, const char *group) {
  ASSERT_EQ(add_dfs_node("127.0.0.1", share, local, group), 1U);
}

// What smbclient says when the account does that in the DFS root.
std::string said(const std::string &account, const std::string &commands) {
  const Ended ended = client(account, "DFS", commands);
  return ended.out + ended.err;
}

// The file that the account gets from behind the link.
std::string welcome_behind(const std::string &account, const std::string &link) {
  Appliance{}.remove("/tmp/got");
  const std::string words = said(account, "cd \"" + link + "\"; get welcome.txt /tmp/got");
  return exists("/tmp/got") ? read_file("/tmp/got") : words;
}

TEST_F(DfsRoot, ALinkIsFollowedToItsShare) {
  add_link("Music", "tunes", "media");
  serve();
  EXPECT_EQ(welcome_behind("alice", "media\\tunes"), "welcome to this share\n");
}

TEST_F(DfsRoot, BehindALinkTheListsOfItsShareHold) {
  add_link("Music", "tunes", "media");
  serve();
  EXPECT_FALSE(contains(said("alice", "put /etc/hostname media/tunes/alice.txt"), "NT_STATUS"));
  EXPECT_TRUE(exists("/mnt/HD/HD_a2/Music/alice.txt"));
  EXPECT_EQ(welcome_behind("bob", "media\\tunes"), "welcome to this share\n");
  EXPECT_TRUE(contains(said("bob", "put /etc/hostname media/tunes/bob.txt"), "NT_STATUS_ACCESS_DENIED"));
  for (const char *account : {"carol", guest}) {
    EXPECT_TRUE(contains(welcome_behind(account, "media\\tunes"), "NT_STATUS_ACCESS_DENIED"));
  }
}

TEST_F(DfsRoot, NamesAreReachedAsTheyAre) {
  add_link("R&B $1", "my tunes", "my media");
  add_link("R&B $1", "R&B (old)", "R&D");
  add_link("R&B $1", "\u97f3\u697d", "M\u00fcsik");
  serve("R&B $1");
  for (const char *link : {"my media\\my tunes", "R&D\\R&B (old)", "M\u00fcsik\\\u97f3\u697d"}) {
    SCOPED_TRACE(link);
    EXPECT_EQ(welcome_behind("alice", link), "welcome to this share\n");
  }
}

TEST_F(DfsRoot, EveryoneSeesTheGroupsAndTheirLinks) {
  add_link("Music", "tunes", "media");
  add_link("Music", "papers", "office");
  serve();
  for (const char *account : {"alice", "carol", guest}) {
    SCOPED_TRACE(account);
    const std::string groups = said(account, "ls");
    EXPECT_TRUE(contains(groups, "\n  media ") && contains(groups, "\n  office ")) << groups;
    EXPECT_TRUE(contains(said(account, "cd media; ls"), "\n  tunes "));
    EXPECT_FALSE(contains(said(account, "cd media; ls"), "\n  papers "));
  }
}

TEST_F(DfsRoot, ANewTreeIsServedAtOnce) {
  add_link("Music", "tunes", "media");
  serve();
  add_link("Music", "papers", "office");
  ASSERT_EQ(del_dfs_node("tunes", "media"), 1U);
  create_dfs_link();
  EXPECT_EQ(welcome_behind("alice", "office\\papers"), "welcome to this share\n");
  EXPECT_FALSE(contains(said("alice", "ls"), "\n  media "));
}

TEST_F(DfsRoot, ALinkToNoShareIsShownAndNotFollowed) {
  add_link("Nonesuch", "gone", "media");
  serve();
  EXPECT_TRUE(contains(said("alice", "cd media; ls"), "\n  gone "));
  EXPECT_TRUE(contains(said("alice", "cd media\\gone"), "NT_STATUS_BAD_NETWORK_NAME"));
}

TEST_F(DfsRoot, SwitchedOffThereIsNone) {
  add_link("Music", "tunes", "media");
  add(Share{"Music"}.path("/mnt/HD/HD_a2/Music").everyone());
  create_dfs_link();
  start();
  EXPECT_EQ(access("alice", "DFS"), "no such share");
  EXPECT_EQ(served_shares(), Names{"Music"});
}

} // namespace
} // namespace nasshare::tests
