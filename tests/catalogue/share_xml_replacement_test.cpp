// A stored file is replaced whole: the old or the new one stands at any instant, and a write that fails
// leaves the old one.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "text.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

const std::string share_file = first_share_file;
const std::string system_folder = first_hidden_folder;

// What was made durable and renamed so far, one line each, and what is to fail: a step, or all that begin
// like it with a '*' behind.
std::string steps;
std::string failing;

bool is_to_fail(const std::string &what) {
  return failing.ends_with('*') ? what.starts_with(failing.substr(0, failing.size() - 1)) : what == failing;
}

int step(const std::string &what) {
  steps += what + "\n";
  if (!is_to_fail(what)) {
    return 0;
  }
  errno = EIO;
  return -1;
}

std::string path_of(int fd) {
  std::array<char, PATH_MAX> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(fd);
  return readlink(link.c_str(), path.data(), path.size() - 1) < 0 ? "?" : path.data();
}

int flush_step(int fd) {
  return step("flush " + path_of(fd));
}

// The process ends before that rename on a hidden partition, counted from 1.
int renames_to_the_end = 0;

// Somebody who can rename files of others in /tmp puts it there, once the new text has been written.
std::string exchanged_for;

void exchange_temporary(const std::string &written) {
  if (!exchanged_for.empty() && written == temporary_share_file) {
    renameat(AT_FDCWD, exchanged_for.c_str(), AT_FDCWD, temporary_share_file);
  }
}

int rename_step(const std::string &from, const std::string &to) {
  if (to.starts_with("/mnt/HD_") && --renames_to_the_end == 0) {
    raise(SIGKILL);
  }
  return step("rename " + from + " " + to);
}

void list_shares() {
  Insert_Smb_Node(Share{"Music"}.on_disk("WD-1").path("/mnt/HD/HD_a2/x").everyone());
}

std::string new_text() {
  return share_xml(
      {Share{"Music"}.on_disk("WD-1").path("/mnt/HD/HD_a2/x").browseable("yes").public_("yes").everyone()});
}

void mount_options(const std::string &options, const std::string &mounted) {
  ASSERT_EQ(run_program({"mount", "-o", "remount," + options, mounted}).status, 0);
}

// The write fails, says nothing, leaves the old text and nothing beside it.
void expect_failure_leaves_the_old_file() {
  Captured captured;
  EXPECT_EQ(create_HD_xml(share_file.c_str()), -1);
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(captured.err(), "");
  EXPECT_EQ(read_file(share_file), "old");
  EXPECT_EQ(names_in(system_folder), Names{".smb.xml"});
}

TEST(ShareXmlReplacement, MakesANewFile) {
  Appliance{}.shares("/mnt/HD_a4", "old");
  ASSERT_EQ(link(share_file.c_str(), (system_folder + "/kept").c_str()), 0);
  std::ifstream reader(share_file);
  const ino_t before = inode(share_file);
  list_shares();
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_NE(inode(share_file), before);
  EXPECT_EQ(read_file(share_file), new_text());
  EXPECT_EQ(read_file(system_folder + "/kept"), "old");
  std::string text;
  std::getline(reader, text);
  EXPECT_EQ(text, "old") << "who has the old file open keeps it";
  EXPECT_EQ(names_in(system_folder), (Names{".smb.xml", "kept"}));
}

TEST(ShareXmlReplacement, FlushesTheFileBeforeItsNameAndTheFolderBehind) {
  Appliance{}.shares("/mnt/HD_a4", "old");
  list_shares();
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(steps, "flush " + share_file + ".new\n" + "rename " + share_file + ".new " + share_file + "\n" +
                       "flush " + system_folder + "\n");
}

TEST(ShareXmlReplacement, GivesTheModeOfAFreshFile) {
  Appliance{}.file(share_file, "old", 0600);
  list_shares();
  umask(022);
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(mode(share_file), 0644U);
  umask(027);
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(mode(share_file), 0640U);
}

TEST(ShareXmlReplacement, ReplacesALinkAndNotWhatItPointsTo) {
  Appliance{}.file("/mnt/elsewhere.xml", "old").folder(system_folder).link("/mnt/elsewhere.xml", share_file);
  list_shares();
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(read_file("/mnt/elsewhere.xml"), "old");
  EXPECT_EQ(read_file(share_file), new_text());
  struct stat status {};
  ASSERT_EQ(lstat(share_file.c_str(), &status), 0);
  EXPECT_TRUE(S_ISREG(status.st_mode));
}

TEST(ShareXmlReplacement, WhatAPowerCutLeftIsNoObstacle) {
  Appliance{}.shares("/mnt/HD_a4", "old").file(share_file + ".new", std::string(100000, 'x'), 0400);
  list_shares();
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(read_file(share_file), new_text());
  EXPECT_EQ(names_in(system_folder), Names{".smb.xml"});
}

TEST(ShareXmlReplacement, ALinkThatWaitsBesideTheFileIsNotFollowed) {
  Appliance{}
      .shares("/mnt/HD_a4", "old")
      .file("/etc/victim", "untouched")
      .link("/etc/victim", share_file + ".new");
  list_shares();
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(read_file("/etc/victim"), "untouched");
  EXPECT_EQ(read_file(share_file), new_text());
}

TEST(ShareXmlReplacement, AReadOnlyVolumeKeepsTheOldFile) {
  Appliance{}.hidden("/dev/sda4", "/mnt/HD_a4").shares("/mnt/HD_a4", "old");
  list_shares();
  mount_options("ro", "/mnt/HD_a4");
  expect_failure_leaves_the_old_file();
}

TEST(ShareXmlReplacement, AFullVolumeKeepsTheOldFile) {
  Appliance{}.hidden("/dev/sda4", "/mnt/HD_a4").shares("/mnt/HD_a4", "old");
  Insert_Smb_Node(
      Share{"Music"}.read("#" + std::string(12000, 'x') + "#").write("#" + std::string(12000, 'y') + "#"));
  mount_options("size=16k", "/mnt/HD_a4");
  expect_failure_leaves_the_old_file();
}

TEST(ShareXmlReplacement, AFailedFlushKeepsTheOldFile) {
  Appliance{}.shares("/mnt/HD_a4", "old");
  list_shares();
  failing = "flush " + share_file + ".new";
  expect_failure_leaves_the_old_file();
}

TEST(ShareXmlReplacement, AFailedRenameKeepsTheOldFile) {
  Appliance{}.shares("/mnt/HD_a4", "old");
  list_shares();
  failing = "rename " + share_file + ".new " + share_file;
  expect_failure_leaves_the_old_file();
}

TEST(ShareXmlReplacement, AFolderThatCannotBeFlushedIsNoFailure) {
  Appliance{}.shares("/mnt/HD_a4", "old");
  list_shares();
  failing = "flush " + system_folder;
  EXPECT_EQ(create_HD_xml(share_file.c_str()), 0);
  EXPECT_EQ(read_file(share_file), new_text());
}

TEST(ShareXmlReplacement, FailsWithoutAPlaceForTheFile) {
  Appliance{}.folder(share_file);
  list_shares();
  const std::string long_name = "/mnt/" + std::string(256, 'n');
  const std::string long_path = "/mnt" + repeated("/folder", 715);
  Captured captured;
  for (const std::string &target : {std::string("/mnt/nonesuch/.smb.xml"), share_file, std::string(),
                                    long_name, long_path, std::string("/etc/passwd/.smb.xml")}) {
    SCOPED_TRACE(target.substr(0, 40));
    EXPECT_EQ(create_HD_xml(target.c_str()), -1);
  }
  EXPECT_EQ(create_HD_xml(nullptr), -1);
  EXPECT_EQ(captured.err(), "");
  EXPECT_EQ(names_in("/mnt"), Names{"HD_a4"});
  EXPECT_EQ(names_in(system_folder), Names{".smb.xml"});
}

TEST(ShareXmlReplacement, TheTemporaryFileIsGoneAfterAFailedWrite) {
  const std::string temporary = temporary_share_file;
  for (const bool empty : {false, true}) {
    SCOPED_TRACE(empty ? "empty catalogue" : "one share");
    Appliance{}.file(temporary, "what an earlier program left");
    Free_All_List();
    if (!empty) {
      list_shares();
    }
    failing = "flush " + temporary + ".new*";
    EXPECT_EQ(create_HD_xml(temporary.c_str()), -1);
    for (const std::string &name : names_in("/tmp")) {
      EXPECT_FALSE(name.starts_with(".smb.xml")) << name;
    }
  }
}

// The name of its successor would be cut to that of another file, or to its own.
TEST(ShareXmlReplacement, OfAFileWithAVeryLongNameLeavesItAndItsNeighboursAlone) {
  std::string long_folder = "/tmp/" + std::string(20, 'd');
  for (int depth = 0; depth < 15; ++depth) {
    long_folder += "/" + std::string(254, 'd');
  }
  Appliance{}.folder(long_folder);
  list_shares();
  for (const std::size_t length : {4091, 4092, 4093, 4094, 4095}) {
    SCOPED_TRACE(length);
    const std::string file = long_folder + "/" + std::string(length - long_folder.size() - 1, 'f');
    const std::string neighbour = (file + ".new").substr(0, 4095);
    Appliance{}.file(file, "old");
    if (neighbour != file) {
      Appliance{}.file(neighbour, "neighbour");
    }
    const int answer = create_HD_xml(file.c_str());
    EXPECT_EQ(answer, length <= 4091 ? 0 : -1);
    EXPECT_EQ(read_file(file) == "old", answer != 0);
    EXPECT_TRUE(length <= 4091 || neighbour == file || read_file(neighbour) == "neighbour");
    Appliance{}.remove(file).remove(neighbour);
  }
}

// The older file is root's, as the new one is, and well-formed: it may be one that an earlier change wrote.
TEST(ExchangedTemporaryFile, IsNotSpread) {
  const std::string before = share_xml({stored_share("Music").write("#alice#,#bob#").deny("#nobody#")});
  Appliance::single_disks().folder("/mnt/HD/HD_a2/Music").shares(before).file("/tmp/older.xml", before);
  exchanged_for = "/tmp/older.xml";
  const Share closed = Share{"Music"}
                           .path("/mnt/HD/HD_a2/Music")
                           .oplocks("yes")
                           .map_archive("no")
                           .write("#alice#")
                           .deny("#bob#");
  EXPECT_EQ(mod_share(closed), 0);
  EXPECT_EQ(read_file(first_share_file), before);
  EXPECT_EQ(read_file(second_share_file), before);
  exchanged_for.clear();
  EXPECT_EQ(mod_share(closed), 1);
}

// The share lies on one volume or on the other, or on both for the readers of one: never on none.
TEST(MovedShare, IsNotLostWhereItsMoveIsKilled) {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/Music").folder("/mnt/HD/HD_b2/Music");
  for (const int from : {0, 1}) {
    const std::string to_path = from == 0 ? "/mnt/HD/HD_b2/Music" : "/mnt/HD/HD_a2/Music";
    for (const int rename : {1, 2}) {
      SCOPED_TRACE(std::to_string(from) + " " + std::to_string(rename));
      machine.shares(share_xml({stored_share("Music", from).everyone()}));
      const Ended ended = run_to_exit([&] {
        renames_to_the_end = rename;
        mod_share(Share{"Music"}.path(to_path).everyone().oplocks("yes").map_archive("no"));
      });
      EXPECT_EQ(ended.status, 128 + SIGKILL);
      EXPECT_EQ(chk_share("Music"), 0);
    }
  }
}

} // namespace
} // namespace nasshare::tests

// These win over the C library's.
extern "C" [[gnu::visibility("default")]] int fsync(int fd) {
  return nasshare::tests::flush_step(fd) == 0 ? static_cast<int>(syscall(SYS_fsync, fd)) : -1;
}

extern "C" [[gnu::visibility("default")]] int rename(const char *from, const char *to) noexcept {
  const int answer =
      nasshare::tests::rename_step(from, to) == 0 ? renameat(AT_FDCWD, from, AT_FDCWD, to) : -1;
  nasshare::tests::exchange_temporary(to);
  return answer;
}
