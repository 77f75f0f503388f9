// Counting running processes by their command name.
#include "appliance.h"
#include "debug_output.h"
#include "files.h"
#include "nasshare/support.h"
#include "output.h"
#include "running_program.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/mount.h>
#include <sys/prctl.h>

namespace nasshare::tests {
namespace {

// A process of that command name.
RunningProgram process(const std::string &name) {
  return waiting_program("/tmp/" + name);
}

// A /proc with exactly the files that a test puts there.
class MadeUpProc {
public:
  MadeUpProc() { files::require(::mount("made-up", "/proc", "tmpfs", 0, "") == 0, "/proc"); }
  ~MadeUpProc() { ::umount("/proc"); }
  MadeUpProc(const MadeUpProc &) = delete;
  MadeUpProc &operator=(const MadeUpProc &) = delete;

  static void status(const std::string &entry, std::string_view text) {
    Appliance{}.file("/proc/" + entry + "/status", text);
  }
};

TEST(Processes, AreCountedByName) {
  EXPECT_EQ(smb_check_ps("amule"), 0);
  const RunningProgram one = process("amule");
  EXPECT_EQ(smb_check_ps("amule"), 1);
  const RunningProgram two = process("amule");
  EXPECT_EQ(smb_check_ps("amule"), 2);
}

TEST(Processes, NameIsComparedWholeAndCaseCounts) {
  const RunningProgram one = process("amuled");
  EXPECT_EQ(smb_check_ps("amuled"), 1);
  for (const char *other : {"amule", "amuledd", "Amuled", "muled", "amuled ", ""}) {
    SCOPED_TRACE(other);
    EXPECT_EQ(smb_check_ps(other), 0);
  }
}

TEST(Processes, NameIsTheKernelsWith15Characters) {
  const RunningProgram one = process("a-very-long-command");
  EXPECT_EQ(smb_check_ps("a-very-long-com"), 1);
  EXPECT_EQ(smb_check_ps("a-very-long-command"), 0);
}

TEST(Processes, NameEndsAtItsFirstBlank) {
  const RunningProgram one = process("a mule");
  EXPECT_EQ(smb_check_ps("a"), 1);
  EXPECT_EQ(smb_check_ps("a mule"), 0);
}

TEST(Processes, EntriesThatAreNoProcessesAreSkipped) {
  ::prctl(PR_SET_NAME, "counted-once");
  EXPECT_EQ(smb_check_ps("counted-once"), 1) << "self and thread-self lead to this process too";
}

TEST(Processes, OnlyEntriesThatBeginWithADigitAreRead) {
  const MadeUpProc proc;
  for (const char *entry : {"1", "42", "99999", "self", "net", "x1", "-1", ".5"}) {
    MadeUpProc::status(entry, "Name:\tamule\nState:\tS (sleeping)\n");
  }
  EXPECT_EQ(smb_check_ps("amule"), 3);
}

TEST(Processes, EntryCountsAsTheNumberThatItBeginsWith) {
  const MadeUpProc proc;
  MadeUpProc::status("7", "Name:\tamule\n");
  MadeUpProc::status("7-old", "Name:\tother\n");
  EXPECT_EQ(smb_check_ps("amule"), 2);
  EXPECT_EQ(smb_check_ps("other"), 0);
}

TEST(Processes, NameIsTheWordBehindTheLabelOfTheFirstLine) {
  const struct {
    const char *status;
    int count;
  } rows[] = {
      {"Name:\tamule\n", 1},
      {"Name:   amule  \n", 1},
      {"Name:amule", 1},
      {"Name:\tamule gui\n", 1},
      {"State:\tS\nName:\tamule\n", 0},
      {"\nName:\tamule\n", 0},
      {"name:\tamule\n", 0},
      {"Pid, Name:\tamule\n", 0},
      {"Name:\n", 0},
      {"amule\n", 0},
      {"", 0},
  };
  const MadeUpProc proc;
  for (const auto &row : rows) {
    SCOPED_TRACE(row.status);
    MadeUpProc::status("1", row.status);
    EXPECT_EQ(smb_check_ps("amule"), row.count);
  }
}

TEST(Processes, LongFirstLineIsReadUpTo1023Bytes) {
  const MadeUpProc proc;
  MadeUpProc::status("1", "Name:\t" + std::string(5000, 'n') + "\n");
  EXPECT_EQ(smb_check_ps(std::string(1017, 'n').c_str()), 1);
  EXPECT_EQ(smb_check_ps(std::string(5000, 'n').c_str()), 0);
}

TEST(Processes, EntryWithoutAStatusIsSkipped) {
  const MadeUpProc proc;
  Appliance{}.folder("/proc/1").file("/proc/2", "Name:\tamule\n");
  MadeUpProc::status("3", "Name:\tamule\n");
  EXPECT_EQ(output_of([] { EXPECT_EQ(smb_check_ps("amule"), 1); }), "");
}

TEST(Processes, ProcThatCannotBeOpenedHasNone) {
  const RunningProgram one = process("amule");
  const auto count = [] {
    const DescriptorLimit none(0);
    EXPECT_EQ(smb_check_ps("amule"), 0);
  };
  expect_output(count, [](int /*flag*/) { return "Can't open /proc"; });
}

TEST(Processes, CountingLeavesNothingOpen) {
  const RunningProgram one = process("amule");
  const DescriptorLimit few(3);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(smb_check_ps("amule"), 1);
  }
}

TEST(Processes, MissingNameCountsNone) {
  const MadeUpProc proc;
  MadeUpProc::status("1", "Name:\t\n");
  EXPECT_EQ(smb_check_ps(nullptr), 0);
}

} // namespace
} // namespace nasshare::tests
