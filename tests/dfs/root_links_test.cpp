// The tree that Samba serves: a folder per group, in it a link "msdfs:host\share" per link.
#include "appliance.h"
#include "debug_output.h"
#include "links.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "output.h"
#include "text.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

const std::string root = "/etc/dfsroot";

std::string target(const std::string &path) {
  return std::filesystem::read_symlink(path);
}

void enabled(const Links &links) {
  Appliance{}.config("/system_mgr/samba/dfs_enable", "1");
  dfs_remove_all();
  for (const auto &[host, share, local, group] : links) {
    ASSERT_EQ(add_dfs_node(host.c_str(), share.c_str(), local.c_str(), group.c_str()), 1U);
  }
}

// rm, mkdir, chmod and ln do their work and write their calls, each argument in brackets.
void watch_commands() {
  Appliance machine;
  for (const char *name : {"rm", "mkdir", "chmod", "ln"}) {
    machine.script(name, std::string("{ printf '") + name + "'; printf ' [%s]' \"$@\"; echo; } " +
                             ">>/tmp/calls\nexec /bin/" + name + " \"$@\"");
  }
}

// The commands that the link of these names is made with.
std::string shown_command(const Link &link) {
  enabled({link});
  smb_dbg_flag = 1;
  Captured captured;
  create_dfs_link();
  const std::string out = captured.out();
  const std::size_t start = out.find("dfs link cmd [");
  return start == std::string::npos ? out : out.substr(start);
}

TEST(RootLinks, ALinkLiesInTheFolderOfItsGroup) {
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
  EXPECT_EQ(names_in(root + "/media"), Names{"tunes"});
  EXPECT_EQ(target(root + "/media/tunes"), "msdfs:srv1\\music");
  EXPECT_EQ(mode(root + "/media"), 0777U);
  EXPECT_EQ(mode(root), 0777U);
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(RootLinks, TheUmaskDoesNotMatter) {
  enabled({tunes});
  umask(077);
  create_dfs_link();
  EXPECT_EQ(mode(root), 0777U);
  EXPECT_EQ(mode(root + "/media"), 0777U);
}

TEST(RootLinks, AGroupsFolderIsMadeOnce) {
  watch_commands();
  enabled({tunes, papers, films});
  create_dfs_link();
  EXPECT_EQ(read_file("/tmp/calls"), "rm [-rf] [/etc/dfsroot]\n"
                                     "mkdir [/etc/dfsroot/media]\n"
                                     "chmod [777] [/etc/dfsroot/media]\n"
                                     "ln [-s] [msdfs:srv1\\music] [/etc/dfsroot/media/tunes]\n"
                                     "mkdir [/etc/dfsroot/office]\n"
                                     "chmod [777] [/etc/dfsroot/office]\n"
                                     "ln [-s] [msdfs:srv3\\docs] [/etc/dfsroot/office/papers]\n"
                                     "ln [-s] [msdfs:srv2\\movies] [/etc/dfsroot/media/films]\n");
  EXPECT_EQ(names_in(root + "/media"), (Names{"films", "tunes"}));
  EXPECT_EQ(names_in(root + "/office"), Names{"papers"});
}

TEST(RootLinks, AGroupWithABlankIsMadeAgainForEachLink) {
  watch_commands();
  enabled({{"srv1", "my music", "my tunes", "my media"}, {"srv2", "movies", "films", "my media"}});
  Captured captured;
  create_dfs_link();
  captured.stop();
  EXPECT_EQ(read_file("/tmp/calls"), "rm [-rf] [/etc/dfsroot]\n"
                                     "mkdir [/etc/dfsroot/my media]\n"
                                     "chmod [777] [/etc/dfsroot/my media]\n"
                                     "ln [-s] [msdfs:srv1\\my music] [/etc/dfsroot/my media/my tunes]\n"
                                     "mkdir [/etc/dfsroot/my media]\n"
                                     "chmod [777] [/etc/dfsroot/my media]\n"
                                     "ln [-s] [msdfs:srv2\\movies] [/etc/dfsroot/my media/films]\n");
  EXPECT_EQ(names_in(root), Names{"my media"});
  EXPECT_EQ(names_in(root + "/my media"), (Names{"films", "my tunes"}));
  EXPECT_EQ(mode(root + "/my media"), 0777U);
}

TEST(RootLinks, TheCommandShowsEscapedValues) {
  EXPECT_EQ(shown_command({"srv 1", "my music", "my tunes", "my media"}),
            "dfs link cmd [ln -s msdfs:srv\\ 1\\\\my\\ music /etc/dfsroot/my\\ media/my\\ tunes]\n");
}

TEST(RootLinks, EverySpecialCharacterReachesTheTreeAsItIs) {
  for (const char character : std::string("$`#%^&()+{};[]'= ")) {
    const std::string name = std::string("a") + character + "b" + character;
    SCOPED_TRACE(name);
    Appliance{}.remove(link_path);
    enabled({{name, name, name, name}});
    create_dfs_link();
    EXPECT_EQ(names_in(root), Names{name});
    EXPECT_EQ(names_in(root + "/" + name), Names{name});
    EXPECT_EQ(target(root + "/" + name + "/" + name), "msdfs:" + name + "\\" + name);
  }
}

TEST(RootLinks, ASpecialCharacterInFrontReachesTheTreeToo) {
  const std::string name = "$HOME `id` #1";
  enabled({{name, name, name, name}});
  create_dfs_link();
  EXPECT_EQ(target(root + "/" + name + "/" + name), "msdfs:" + name + "\\" + name);
}

TEST(RootLinks, ReloadedValuesStandInTheTreeDecoded) {
  enabled({{"srv1", "R&amp;B", "R&B", "&#38;"}});
  create_dfs_link();
  EXPECT_EQ(target(root + "/&#38;/R&B"), "msdfs:srv1\\R&amp;B");
}

TEST(RootLinks, LettersOfEveryLanguageStandInTheTree) {
  enabled({{"srv1", "\u97f3\u697d", "M\u00fcsik", "\u00e4"}});
  create_dfs_link();
  EXPECT_EQ(target(root + "/\u00e4/M\u00fcsik"), "msdfs:srv1\\\u97f3\u697d");
}

TEST(RootLinks, OtherCharactersOfTheShellStayUnescaped) {
  EXPECT_EQ(shown_command({"srv1", "music", "a\\b\"c\"?", "media"}),
            "dfs link cmd [ln -s msdfs:srv1\\\\music /etc/dfsroot/media/a\\b\"c\"?]\n");
  EXPECT_EQ(names_in(root + "/media"), Names{"abc?"});
}

TEST(RootLinks, TheWholeCommandFitsWhateverTheNames) {
  const std::string h(511, '$');
  const std::string s(511, ' ');
  const std::string l(511, '(');
  const std::string g(511, ')');
  const auto escaped_511_times = [](char character) { return repeated(std::string("\\") + character, 511); };
  EXPECT_EQ(shown_command({h, s, l, g}), "dfs link cmd [ln -s msdfs:" + escaped_511_times('$') + "\\\\" +
                                             escaped_511_times(' ') + " /etc/dfsroot/" +
                                             escaped_511_times(')') + "/" + escaped_511_times('(') + "]\n");
  EXPECT_EQ(names_in(root), Names{});
}

TEST(RootLinks, ALongTargetIsKeptWhole) {
  const std::string h(511, 'h');
  const std::string s(511, ' ');
  const std::string l(255, 'l');
  const std::string g(255, 'g');
  enabled({{h, s, l, g}});
  create_dfs_link();
  EXPECT_EQ(target(root + "/" + g + "/" + l), "msdfs:" + h + "\\" + s);
}

TEST(RootLinks, TheOldTreeIsReplacedWhole) {
  Appliance{}
      .file(root + "/media/file", "old")
      .link("msdfs:old\\share", root + "/media/tunes")
      .folder(root + "/gone/deep", 0700);
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
  EXPECT_EQ(names_in(root + "/media"), Names{"tunes"});
  EXPECT_EQ(target(root + "/media/tunes"), "msdfs:srv1\\music");
}

TEST(RootLinks, AFileInPlaceOfTheRootIsReplaced) {
  Appliance{}.file(root, "no folder", 0600);
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
}

TEST(RootLinks, DeletedLinksDisappearWithTheNextCall) {
  enabled({tunes, papers});
  create_dfs_link();
  ASSERT_EQ(del_dfs_node("papers", "office"), 1U);
  EXPECT_TRUE(exists(root + "/office"));
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
}

TEST(RootLinks, WithoutALinkFileTheTreeIsEmpty) {
  Appliance{}.config("/system_mgr/samba/dfs_enable", "1").file(root + "/media/file", "old");
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{});
  EXPECT_EQ(mode(root), 0777U);
  EXPECT_FALSE(exists(link_path));
}

TEST(RootLinks, WithABadLinkFileTheTreeIsEmpty) {
  Appliance{}.config("/system_mgr/samba/dfs_enable", "1").file(link_path, "<config><dfs><item>");
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{});
  EXPECT_EQ(read_file(link_path), "<config><dfs><item>");
}

TEST(RootLinks, AnEmptyCatalogueGivesAnEmptyTree) {
  Appliance{}.file(link_path, link_file({}));
  enabled({});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{});
}

TEST(RootLinks, AGroupWithoutLinksHasNoFolder) {
  ASSERT_EQ(add_dfs_group_node("empty"), 1U);
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
}

TEST(RootLinks, TheGroupFileIsNotRead) {
  Appliance{}.file(group_path, group_file({"office"}));
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
}

TEST(RootLinks, OfTwoLinksOfOneIdentityTheFirstWins) {
  Appliance{}.file(link_path, link_file({tunes, {"srv9", "other", "tunes", "media"}, films}));
  enabled({});
  Captured captured;
  create_dfs_link();
  EXPECT_EQ(captured.out(), "");
  EXPECT_NE(captured.err(), "") << "the shell's own message";
  EXPECT_EQ(target(root + "/media/tunes"), "msdfs:srv1\\music");
  EXPECT_EQ(target(root + "/media/films"), "msdfs:srv2\\movies");
}

TEST(RootLinks, FailingCommandsAreNotNoticed) {
  for (const char *name : {"mkdir", "chmod", "ln"}) {
    Appliance{}.command(name, "", 1);
  }
  enabled({tunes, papers});
  create_dfs_link();
  EXPECT_EQ(transcript(), "mkdir /etc/dfsroot/media\n"
                          "chmod 777 /etc/dfsroot/media\n"
                          "ln -s msdfs:srv1\\music /etc/dfsroot/media/tunes\n"
                          "mkdir /etc/dfsroot/office\n"
                          "chmod 777 /etc/dfsroot/office\n"
                          "ln -s msdfs:srv3\\docs /etc/dfsroot/office/papers\n");
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(RootLinks, NothingHappensUnlessSwitchedOnWithOne) {
  Appliance{}
      .file(link_path, link_file({tunes}))
      .file(root + "/old/file", "old")
      .logged("rm")
      .logged("mkdir");
  for (const char *value : {"0", "2", "-1", "", "yes"}) {
    SCOPED_TRACE(value);
    Appliance{}.config("/system_mgr/samba/dfs_enable", value);
    expect_silence(create_dfs_link);
    EXPECT_EQ(names_in(root), Names{"old"});
    EXPECT_EQ(read_file(root + "/old/file"), "old");
    EXPECT_EQ(transcript(), "");
  }
}

TEST(RootLinks, NothingHappensWithoutTheSwitch) {
  Appliance{}.file(link_path, link_file({tunes}));
  pss->dfs_enable = 1;
  create_dfs_link();
  EXPECT_FALSE(exists(root));
  EXPECT_EQ(pss->dfs_enable, 0);
}

TEST(RootLinks, TheSwitchIsKeptInTheCatalogue) {
  for (const int value : {1, 0, 2, -1}) {
    Appliance{}.config("/system_mgr/samba/dfs_enable", std::to_string(value));
    create_dfs_link();
    EXPECT_EQ(pss->dfs_enable, value);
  }
}

TEST(RootLinks, WhatTheListHeldBeforeIsNotPublished) {
  enabled({tunes});
  list_link(papers);
  create_dfs_link();
  EXPECT_EQ(names_in(root), Names{"media"});
}

TEST(RootLinks, TheLinksAreListedForAnyDebugFlagAndTheCommandsForOne) {
  enabled({tunes, papers});
  const std::string listing = link_listing({tunes, papers});
  expect_listing_and_trace(create_dfs_link, listing,
                           listing + "dfs link cmd [ln -s msdfs:srv1\\\\music /etc/dfsroot/media/tunes]\n"
                                     "dfs link cmd [ln -s msdfs:srv3\\\\docs /etc/dfsroot/office/papers]\n");
}

TEST(RootLinks, ACommandIsShownBeforeItRuns) {
  Appliance{}.script("ln", "echo linking");
  enabled({tunes});
  smb_dbg_flag = 1;
  const std::string out = output_of(create_dfs_link);
  EXPECT_LT(out.find("dfs link cmd"), out.find("linking"));
}

// ---- Others on the machine

// The commands follow links: nobody may plant one while they run.
TEST(RootLinks, TheTreeIsClosedWhileItIsBuilt) {
  Appliance machine;
  machine.script("ln", "stat -c %a /etc/dfsroot >>/tmp/modes; exec /bin/ln \"$@\"");
  enabled({tunes, papers});
  for (int i = 0; i < 2; ++i) {
    machine.remove("/tmp/modes");
    create_dfs_link();
    EXPECT_EQ(read_file("/tmp/modes"), "700\n700\n");
    EXPECT_EQ(mode(root), 0777U);
  }
}

TEST(RootLinks, AnOldTreeThatDoesNotGoIsNotBuiltOn) {
  Appliance machine;
  machine.folder("/etc/victim").link("/etc/victim", root + "/media/tunes").command("rm");
  enabled({tunes});
  create_dfs_link();
  EXPECT_EQ(names_in("/etc/victim"), Names{});
}

TEST(RootLinks, ARootThatIsMountedIsBuiltOn) {
  Appliance machine;
  machine.folder(root);
  ASSERT_EQ(mount("tree", root.c_str(), "tmpfs", 0, ""), 0);
  enabled({tunes});
  Captured captured;
  create_dfs_link();
  captured.stop();
  EXPECT_EQ(names_in(root + "/media"), Names{"tunes"});
  EXPECT_EQ(mode(root), 0777U);
}

TEST(DfsTree, IsWholeAfterTwoRebuildsAtOnce) {
  const Links links{{"srv1", "music", "tunes", "media"},
                    {"srv1", "films", "films", "media"},
                    {"srv2", "docs", "papers", "work"}};
  enabled(links);
  for (int round = 0; round < 10; ++round) {
    const pid_t other = fork();
    if (other == 0) {
      create_dfs_link();
      _exit(0);
    }
    create_dfs_link();
    int status = -1;
    ASSERT_EQ(waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(names_in(root + "/media"), (Names{"films", "tunes"}));
    EXPECT_EQ(names_in(root + "/work"), Names{"papers"});
    EXPECT_EQ(mode(root), 0777U);
  }
}

// The commands of the killed one go on with their work, and would take the new tree away.
TEST(DfsTree, IsWholeAfterARebuildThatWasKilled) {
  enabled({tunes});
  Appliance{}.script("rm", "[ ! -e /tmp/begun ] || exec /bin/rm \"$@\"\n"
                           ": >/tmp/begun; sleep 1; /bin/rm \"$@\"; : >/tmp/ended");
  const pid_t killed = fork();
  if (killed == 0) {
    create_dfs_link();
    _exit(0);
  }
  ASSERT_EQ(shell("timeout 10 sh -c 'until [ -e /tmp/begun ]; do sleep 0.05; done'").status, 0);
  ASSERT_EQ(kill(killed, SIGKILL), 0);
  ASSERT_EQ(waitpid(killed, nullptr, 0), killed);
  create_dfs_link();
  ASSERT_EQ(shell("timeout 10 sh -c 'until [ -e /tmp/ended ]; do sleep 0.05; done'").status, 0);
  EXPECT_EQ(target(root + "/media/tunes"), "msdfs:srv1\\music");
}

} // namespace
} // namespace nasshare::tests
