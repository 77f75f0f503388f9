// Several programs change the catalogue at the same time.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "next_definition.h"
#include "share.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

constexpr int programs = 10;
constexpr int changes = 25;
constexpr const char *lock = "/run/nasshare.lock";

void run_at_once(const std::function<bool(int program, int change)> &change) {
  std::vector<pid_t> children;
  for (int program = 0; program < programs; ++program) {
    children.push_back(fork());
    if (children.back() == 0) {
      int done = 0;
      for (int i = 0; i < changes; ++i) {
        done += change(program, i) ? 1 : 0;
      }
      _exit(done == changes ? 0 : 1);
    }
  }
  for (const pid_t child : children) {
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
}

bool starts_a_service = false;
pid_t service = -1;

void start_service_once() {
  if (!starts_a_service || service != -1) {
    return;
  }
  service = fork();
  if (service == 0) {
    pause();
    _exit(0);
  }
}

std::string name_of(int program, int change) {
  return std::to_string(program) + "-" + std::to_string(change);
}

TEST(ProgramsAtOnce, LoseNoShare) {
  Appliance::single_disks().folder("/mnt/HD/HD_a2/Music").command("smbcom");
  run_at_once([](int program, int change) {
    return add_share(Share{name_of(program, change)}.path("/mnt/HD/HD_a2/Music").write("#alice#")) == 1;
  });
  get_samba_info();
  EXPECT_EQ(pss->count, programs * changes);
  std::printf("%d programs added %d shares\n", programs, pss->count);
  Free_All_List();
}

TEST(ProgramsAtOnce, LoseNoLink) {
  Appliance{};
  run_at_once([](int program, int change) {
    return add_dfs_node("host", "share", name_of(program, change).c_str(), "group") == 1;
  });
  get_dfs_info();
  EXPECT_EQ(pdfs->count, static_cast<unsigned>(programs * changes));
  dfs_remove_all();
}

TEST(ProgramLock, OfAKilledHolderBlocksNobody) {
  Appliance::single_disks().folder("/mnt/HD/HD_a2/Music");
  std::array<int, 2> ready{};
  ASSERT_EQ(pipe(ready.data()), 0);
  const pid_t holder = fork();
  if (holder == 0) {
    const int fd = open(lock, O_RDWR | O_CREAT, 0600);
    if (flock(fd, LOCK_EX) == 0 && write(ready[1], "x", 1) == 1) {
      pause();
    }
    _exit(1);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  ASSERT_EQ(kill(holder, SIGKILL), 0);
  ASSERT_EQ(waitpid(holder, nullptr, 0), holder);
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
}

TEST(ProgramLock, IsNotHeldWhileTheServiceCommandRuns) {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .script("smbcom",
              "flock --nonblock /run/nasshare.lock echo free >/tmp/lock-state || echo held >/tmp/lock-state");
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
  EXPECT_EQ(read_file("/tmp/lock-state"), "free\n");
}

bool is_held() {
  const int fd = open(lock, O_RDWR);
  const bool held = fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0;
  close(fd);
  return held;
}

TEST(ProgramLock, IsNotKeptByAProcessThatWasForkedMeanwhile) {
  Appliance::single_disks().folder("/mnt/HD/HD_a2/Music").script("smbcom", ":");
  starts_a_service = true;
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
  ASSERT_GT(service, 0);
  EXPECT_FALSE(is_held());
  kill(service, SIGKILL);
  waitpid(service, nullptr, 0);
}

TEST(ProgramLock, IsDoneWithoutWhereItCannotBeMade) {
  Appliance::single_disks().folder("/mnt/HD/HD_a2/Music").folder(lock);
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music")), 1);
}

} // namespace
} // namespace nasshare::tests

// This program's own configuration database, a firmware's that starts a service of its own when it is first
// read.
extern "C" [[gnu::visibility("default")]] int xml_get_int(const char *key) {
  static auto *const reference = nasshare::tests::next_definition<int(const char *)>("xml_get_int");
  nasshare::tests::start_service_once();
  return reference(key);
}
