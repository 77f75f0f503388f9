// The command line of nasshare itself: usage, options, help and debug output.
#include "nasshare_cli.h"
#include "paths.h"

#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

// The words as the shell takes them.
Ended cli(const std::string &words) {
  return run_program({"sh", "-c", NASSHARE_CLI " " + words});
}

TEST(NasshareUsage, WithoutVolumesLoadingEndsTheProgramAndSaysWhy) {
  for (const std::vector<std::string> &words : {std::vector<std::string>{"list"},
                                                {"show", "x"},
                                                {"check", "x"},
                                                {"delete", "x"},
                                                {"smb-conf"},
                                                {"permit", "alice", "x=read"}}) {
    const Ended ended = nasshare(words);
    EXPECT_EQ(ended.status, 255);
    EXPECT_EQ(ended.err, "nasshare: no data volume is mounted, or no disk is in a bay\n");
  }
}

TEST(NasshareUsage, IsExplained) {
  expect_wrong_usage({}, "no command; see nasshare --help");
  expect_wrong_usage({"rename"}, "no command \"rename\"; see nasshare --help");
  expect_wrong_usage({"list", "x"}, "usage: nasshare list");
  expect_wrong_usage({"show"}, "usage: nasshare show NAME");
  expect_wrong_usage({"add", "x"}, "usage: nasshare add NAME PATH [OPTION]...");
  expect_wrong_usage({"delete"}, "usage: nasshare delete NAME");
  expect_wrong_usage({"check"}, "usage: nasshare check NAME [PATH]");
  expect_wrong_usage({"allows", "x"}, "usage: nasshare allows LIST ACCOUNT");
}

TEST_F(Nasshare, WrongOptionsAreExplained) {
  const std::vector<std::string> words{"add", "Music", "/mnt/HD/HD_a2/music"};
  const auto with = [&](std::vector<std::string> more) {
    more.insert(more.begin(), words.begin(), words.end());
    return more;
  };
  expect_wrong_usage(with({"--path", "/x"}), "\"--path\" is no option of add");
  expect_wrong_usage(with({"alice"}), "\"alice\" is no option of add");
  expect_wrong_usage(with({"--read"}), "--read needs a value");
  expect_wrong_usage(with({"--read", "bob", "--read", "bob"}), "--read is given twice");
  expect_wrong_usage(with({"--oplocks", "1"}), "--oplocks takes yes or no, not \"1\"");
  expect_wrong_usage(with({"--recycle", "yes"}), "--recycle takes flat, tree or off, not \"yes\"");
}

TEST(NasshareUsage, HelpAndVersionArePrinted) {
  const Ended help = nasshare({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out.substr(0, 33), "usage: nasshare [--debug] COMMAND");
  EXPECT_NE(help.out.find("255"), std::string::npos);
  for (const char *command :
       {"list", "show", "add", "modify", "delete", "check", "allows", "permit", "smb-conf", "dfs list",
        "dfs add", "dfs modify", "dfs delete", "dfs-group", "dfs-tree", "browse", "join"}) {
    EXPECT_NE(help.out.find(std::string("\n  ") + command), std::string::npos) << command;
  }
  EXPECT_EQ(nasshare({"--version"}).out.substr(0, 9), "nasshare ");
}

TEST_F(Nasshare, AReportThatCannotBeWrittenIsNoSuccess) {
  for (const std::string words : {"list", "show Music", "check Docs", "--help"}) {
    add({"Music", "/mnt/HD/HD_a2/music"});
    const Ended ended = cli(words + " >/dev/full");
    EXPECT_EQ(ended.status, refused) << words;
    EXPECT_EQ(ended.err, "nasshare: the output could not be written\n");
    succeed({"delete", "Music"});
  }
}

// Web programs start others so. What is opened then must not take the place of the closed ones.
TEST_F(Nasshare, WithClosedStreamsTheTraceLandsInNoFile) {
  machine_.file("/etc/exports", "\"/mnt/HD/HD_b2\" *\n\"/mnt/HD/HD_a2/music\" *\n")
      .config("/system_mgr/nfs/enable", "1");
  add({"Music", "/mnt/HD/HD_a2/music"});
  succeed({"smb-conf"});
  const std::string written = read_file(smb_conf);
  for (const std::string closed : {"<&- >&-", ">&-", "<&- >&- 2>&-"}) {
    EXPECT_EQ(cli("--debug smb-conf " + closed).status, 0) << closed;
    EXPECT_EQ(read_file(smb_conf), written) << closed;
    EXPECT_EQ(shell("cat /run/*.lock").out, "") << closed;
  }
}

TEST_F(Nasshare, DebugPrintsWhatTheLibraryDoes) {
  const Ended ended = nasshare({"--debug", "list"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.out.find("volume number = 2\n"), std::string::npos);
}

} // namespace
} // namespace nasshare::tests
