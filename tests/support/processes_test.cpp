// Counting running processes by their command name.
#include "appliance.h"
#include "descriptor_limit.h"
#include "files.h"
#include "nasshare/support.h"
#include "output.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

// A process of that command name, ended with this object.
class Process {
public:
  explicit Process(const char *name) {
    int named[2];
    files::require(::pipe(named) == 0, "pipe");
    child_ = ::fork();
    if (child_ == 0) {
      ::prctl(PR_SET_NAME, name);
      ::close(named[1]);
      ::close(named[0]);
      for (;;) {
        ::pause();
      }
    }
    ::close(named[1]);
    char byte = 0;
    const ssize_t end = ::read(named[0], &byte, 1);
    files::require(child_ > 0 && end == 0, name);
    ::close(named[0]);
  }
  ~Process() {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  Process(const Process &) = delete;
  Process &operator=(const Process &) = delete;

private:
  pid_t child_ = 0;
};

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
  const Process one("amule");
  EXPECT_EQ(smb_check_ps("amule"), 1);
  const Process two("amule");
  EXPECT_EQ(smb_check_ps("amule"), 2);
}

TEST(Processes, NameIsComparedWholeAndCaseCounts) {
  const Process one("amuled");
  EXPECT_EQ(smb_check_ps("amuled"), 1);
  for (const char *other : {"amule", "amuledd", "Amuled", "muled", "amuled ", ""}) {
    SCOPED_TRACE(other);
    EXPECT_EQ(smb_check_ps(other), 0);
  }
}

TEST(Processes, NameIsTheKernelsWith15Characters) {
  const Process one("a-very-long-command");
  EXPECT_EQ(smb_check_ps("a-very-long-com"), 1);
  EXPECT_EQ(smb_check_ps("a-very-long-command"), 0);
}

TEST(Processes, NameEndsAtItsFirstBlank) {
  const Process one("a mule");
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
  const Process one("amule");
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    int count = -1;
    EXPECT_EQ(output_of([&count] {
                const DescriptorLimit none(0);
                count = smb_check_ps("amule");
              }),
              "Can't open /proc");
    EXPECT_EQ(count, 0);
  }
}

TEST(Processes, CountingLeavesNothingOpen) {
  const Process one("amule");
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
