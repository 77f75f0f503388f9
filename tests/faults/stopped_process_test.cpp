// A process that changes stored files is killed before each of its system calls in turn.
#include "appliance.h"
#include "files.h"
#include "findings.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"
#include "verdict.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace nasshare::tests {
namespace {

Endured stop_everywhere(Verdict &verdict) {
  Endured endured;
  verdict.change().prepare();
  for (int n = 1;; ++n) {
    verdict.begin();
    const Interrupted end = killed_at(n, verdict.change().run);
    if (!end.reached) {
      return endured;
    }
    ++endured.interruptions;
    endured.findings.add("at " + std::to_string(n) + ": " + end.call, verdict.after_kill());
  }
}

void expect_to_survive(const Change &change, const Files &before = make_appliance()) {
  if (!can_kill_at_calls()) {
    GTEST_SKIP() << "no process can watch another's system calls here";
  }
  Verdict verdict(change, before);
  const Endured endured = stop_everywhere(verdict);
  expect_nothing_found(change.name, endured, "system calls at which it was killed", 15);
}

void expect_to_work(const Change &change, const Files &before = make_appliance()) {
  change.prepare();
  const Verdict verdict(change, before);
  EXPECT_EQ(verdict.after_success(run_alone(change.run)), "");
}

std::string without_empty_lines_at_end(std::string text) {
  while (text.ends_with('\n')) {
    text.pop_back();
  }
  return text;
}

// ---- The changes as they are when nothing interrupts them: what "the new file" means here

TEST(StoppedProcess, UninterruptedItAddsAShare) {
  expect_to_work(adding_a_share());
}

TEST(StoppedProcess, UninterruptedItModifiesAShare) {
  expect_to_work(modifying_a_share());
}

TEST(StoppedProcess, UninterruptedItDeletesAShare) {
  expect_to_work(deleting_a_share());
}

TEST(StoppedProcess, UninterruptedItChangesAnAccount) {
  expect_to_work(changing_an_account());
}

TEST(StoppedProcess, UninterruptedItAddsAShareInDomainMode) {
  expect_to_work(adding_a_share_in_domain_mode(), make_domain_appliance());
}

TEST(StoppedProcess, UninterruptedItAddsALink) {
  expect_to_work(adding_a_link());
}

TEST(StoppedProcess, UninterruptedItRenamesAGroup) {
  expect_to_work(renaming_a_group());
}

TEST(StoppedProcess, UninterruptedItStoresAValue) {
  expect_to_work(storing_a_value());
}

// ---- Killed

TEST(StoppedProcess, AddingAShareLeavesTheOldOrTheNewFiles) {
  expect_to_survive(adding_a_share());
}

TEST(StoppedProcess, ModifyingAShareLeavesTheOldOrTheNewFiles) {
  expect_to_survive(modifying_a_share());
}

TEST(StoppedProcess, DeletingAShareLeavesTheOldOrTheNewFiles) {
  expect_to_survive(deleting_a_share());
}

TEST(StoppedProcess, ChangingAnAccountLeavesTheOldOrTheNewFiles) {
  expect_to_survive(changing_an_account());
}

TEST(StoppedProcess, AddingAShareInDomainModeLeavesTheOldOrTheNewFiles) {
  expect_to_survive(adding_a_share_in_domain_mode(), make_domain_appliance());
}

TEST(StoppedProcess, AddingALinkLeavesTheOldOrTheNewFiles) {
  expect_to_survive(adding_a_link());
}

TEST(StoppedProcess, RenamingAGroupLeavesTheOldOrTheNewFiles) {
  expect_to_survive(renaming_a_group());
}

TEST(StoppedProcess, StoringAValueLeavesTheOldOrTheNewFile) {
  expect_to_survive(storing_a_value());
}

// Services read the file while it is written: they see the old text or the new one, and perhaps empty lines.
TEST(StoppedProcess, PublishingLeavesTheOldOrTheNewText) {
  if (!can_kill_at_calls()) {
    GTEST_SKIP() << "no process can watch another's system calls here";
  }
  make_appliance();
  const auto publish = [] {
    get_samba_info2();
    return create_smb_conf() == 0 ? 1 : 0;
  };
  run_alone(publish);
  const std::string whole = read_file(smb_conf);
  for (const std::string &old : {std::string("[ global ]\nold = yes\n"), whole + "[ Old ]\npath = /old\n"}) {
    Endured endured;
    for (int n = 1;; ++n) {
      files::write(smb_conf, old);
      const Interrupted end = killed_at(n, publish);
      if (!end.reached) {
        break;
      }
      ++endured.interruptions;
      const std::string text = without_empty_lines_at_end(read_file(smb_conf));
      endured.findings.add("at " + std::to_string(n) + ": " + end.call,
                           text == without_empty_lines_at_end(old) ||
                                   text == without_empty_lines_at_end(whole)
                               ? ""
                               : "smb.conf reads\n" + text);
    }
    expect_nothing_found("smb.conf", endured, "system calls at which it was killed", 15);
  }
}

// ---- The stops find what they are for

TEST(StoppedProcess, AFileWrittenInPlaceIsFound) {
  if (!can_kill_at_calls()) {
    GTEST_SKIP() << "no process can watch another's system calls here";
  }
  const Files before = make_appliance();
  Change change = storing_a_value();
  change.run = [text = change.after.begin()->second, path = change.after.begin()->first] {
    const int file = open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    const bool written = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(file);
    return written ? 1 : 0;
  };
  Verdict verdict(change, before);
  const Endured endured = stop_everywhere(verdict);
  EXPECT_EQ(endured.interruptions, 3);
  EXPECT_EQ(endured.findings.text(), "1 times, first\n  at 2: system call 1 \n"
                                     "/etc/NAS_CFG/config.xml is neither the old nor the new file:\n\n");
}

} // namespace
} // namespace nasshare::tests
