// Each call of open, write, fsync, rename, close, mkdir, read and access fails in turn, in the process that
// changes stored files.
#include "findings.h"
#include "verdict.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

const std::vector<CallKind> kinds{
    {"open", {SYS_open, SYS_openat, SYS_creat}},
    {"write", {SYS_write, SYS_pwrite64, SYS_writev}},
    {"fsync", {SYS_fsync, SYS_fdatasync}},
    {"rename", {SYS_rename, SYS_renameat, SYS_renameat2}},
    {"close", {SYS_close}, true},
    {"mkdir", {SYS_mkdir, SYS_mkdirat}},
    {"read", {SYS_read, SYS_pread64}},
    {"access", {SYS_access, SYS_faccessat, SYS_faccessat2}},
};

void fail_each(Verdict &verdict, const CallKind &kind, int error, Endured &endured) {
  for (int n = 1;; ++n) {
    verdict.begin();
    const Interrupted end = failed_at(n, kind, error, verdict.change().run);
    if (!end.reached) {
      return;
    }
    ++endured.interruptions;
    endured.findings.add(kind.name + " " + std::to_string(n) + " " + strerrorname_np(error) + " " + end.call,
                         verdict.after_failure(end));
  }
}

Endured fail_everything(Verdict &verdict) {
  Endured endured;
  verdict.change().prepare();
  for (const CallKind &kind : kinds) {
    for (const int error : {ENOSPC, EIO, EMFILE, EUCLEAN}) { // the last is a damaged ext4's
      fail_each(verdict, kind, error, endured);
    }
  }
  return endured;
}

void expect_to_endure(const Change &change, const Files &before = make_appliance()) {
  if (!can_fail_calls()) {
    GTEST_SKIP() << "no process can change another's system calls here";
  }
  Verdict verdict(change, before);
  const Endured endured = fail_everything(verdict);
  expect_nothing_found(change.name, endured, "system calls failed", 25);
}

TEST(FailedCall, AddingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(adding_a_share());
}

TEST(FailedCall, ModifyingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(modifying_a_share());
}

TEST(FailedCall, DeletingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(deleting_a_share());
}

TEST(FailedCall, ChangingAnAccountKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(changing_an_account());
}

TEST(FailedCall, AddingAShareInDomainModeKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(adding_a_share_in_domain_mode(), make_domain_appliance());
}

TEST(FailedCall, AddingALinkKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(adding_a_link());
}

TEST(FailedCall, RenamingAGroupKeepsTheOldFilesOrStoresTheNew) {
  expect_to_endure(renaming_a_group());
}

TEST(FailedCall, StoringAValueKeepsTheOldFileOrStoresTheNew) {
  expect_to_endure(storing_a_value());
}

// A program that answers without looking at what write said.
TEST(FailedCall, AnAnswerThatIsNotTrueIsFound) {
  if (!can_fail_calls()) {
    GTEST_SKIP() << "no process can change another's system calls here";
  }
  const Files before = make_appliance();
  Change change = adding_a_link();
  change.run = [path = change.after.begin()->first, text = change.after.begin()->second] {
    const std::string fresh = path + ".new";
    const int file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const bool written = write(file, text.data(), text.size()) > 0;
    close(file);
    if (written) {
      rename(fresh.c_str(), path.c_str());
    } else {
      unlink(fresh.c_str());
    }
    return 1;
  };
  Verdict verdict(change, before);
  Endured endured;
  fail_each(verdict, kinds[1], ENOSPC, endured);
  EXPECT_EQ(endured.interruptions, 1);
  EXPECT_EQ(endured.findings.text(), "1 times, first\n  write 1 ENOSPC system call 1 \n"
                                     "answered 1 although the old file stands\n\n");
}

} // namespace
} // namespace nasshare::tests
