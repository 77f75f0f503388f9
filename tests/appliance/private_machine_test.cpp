// The machine in which every test case runs: appliance/machine/appliance.
#include "appliance.h"
#include "output.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <grp.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <pwd.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr const char *appliance = PROJECT_FOLDER "/appliance/machine/appliance";

// A machine inside this one; this one's files are its host's.
Ended inner(const std::string &commands) {
  return run_to_exit([&commands] {
    ::execl(appliance, "appliance", "--", "sh", "-c", commands.c_str(), nullptr);
    ::_exit(126);
  });
}

std::string accounts() {
  std::string names;
  while (const passwd *account = getpwent()) {
    names += std::string(account->pw_name) + " ";
  }
  return names;
}

TEST(PrivateMachine, IsMarked) {
  EXPECT_TRUE(exists("/run/appliance/private"));
}

TEST(PrivateMachine, HasItsOwnAccounts) {
  EXPECT_EQ(accounts(), "root nobody alice bob carol ");
  const group *everyone = getgrnam("allaccount");
  ASSERT_NE(everyone, nullptr);
  EXPECT_STREQ(everyone->gr_mem[0], "alice");
  EXPECT_STREQ(everyone->gr_mem[2], "carol");
  EXPECT_EQ(mode("/etc/shadow"), 0600U);
}

TEST(PrivateMachine, HasItsOwnEtc) {
  EXPECT_EQ(read_file("/etc/hostname"), "tarvo\n");
  EXPECT_TRUE(names_in("/etc/samba").empty());
  EXPECT_TRUE(names_in("/etc/NAS_CFG").empty());
  EXPECT_FALSE(exists("/etc/exports"));
  EXPECT_FALSE(exists("/etc/shared_name"));
  EXPECT_EQ(std::filesystem::read_symlink("/etc/mtab"), "/proc/self/mounts");
  EXPECT_EQ(lines_beginning(read_file("/etc/nsswitch.conf"), "passwd"), Names{"passwd: files"});
}

TEST(PrivateMachine, HasItsOwnName) {
  std::array<char, 64> name{};
  ASSERT_EQ(gethostname(name.data(), name.size()), 0);
  EXPECT_STREQ(name.data(), "tarvo");
}

TEST(PrivateMachine, StartsWithoutVolumesDisksAndConfiguration) {
  EXPECT_TRUE(names_in("/run/appliance/disks").empty());
  EXPECT_FALSE(exists("/mnt/HD"));
  EXPECT_FALSE(exists("/mnt/USB"));
  for (const std::string &name : names_in("/dev")) {
    EXPECT_NE(name.substr(0, 2), "sd") << name;
  }
}

TEST(PrivateMachine, HasWorkingDevices) {
  EXPECT_EQ(run_program({"sh", "-c", "echo lost >/dev/null; head -c 3 /dev/zero | wc -c"}).out, "3\n");
  EXPECT_EQ(run_program({"sh", "-c", "echo kept | cat /dev/stdin"}).out, "kept\n");
}

TEST(PrivateMachine, HasItsLoopbackInterfaceUpAndNoOther) {
  ifreq request{};
  std::string("lo").copy(request.ifr_name, IFNAMSIZ - 1);
  const int handle = socket(AF_INET, SOCK_DGRAM, 0);
  ASSERT_GE(handle, 0);
  EXPECT_EQ(ioctl(handle, SIOCGIFFLAGS, &request), 0);
  EXPECT_NE(request.ifr_flags & IFF_UP, 0);
  close(handle);
  const std::string interfaces = read_file("/proc/net/dev");
  EXPECT_EQ(std::ranges::count(interfaces, ':'), 1) << interfaces;
}

TEST(PrivateMachine, SeesOnlyItsOwnProcesses) {
  EXPECT_EQ(read_file("/proc/1/comm"), "bash\n");
  const auto is_process = [](const std::string &name) { return name[0] >= '0' && name[0] <= '9'; };
  EXPECT_EQ(std::ranges::count_if(names_in("/proc"), is_process), 2);
}

TEST(PrivateMachine, ReapsOrphans) {
  // The grandchild outlives its parent and becomes the first process's.
  const std::string orphan = run_program({"sh", "-c", "sh -c 'sleep 0.2 & echo $!'"}).out;
  const std::string entry = "/proc/" + orphan.substr(0, orphan.find('\n'));
  EXPECT_TRUE(exists(entry));
  for (int i = 0; i < 100 && exists(entry); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_FALSE(exists(entry));
}

TEST(PrivateMachine, PassesTheExitStatusOn) {
  EXPECT_EQ(inner("exit 0").status, 0);
  EXPECT_EQ(inner("exit 7").status, 7);
  EXPECT_EQ(inner("kill -9 $$").status, 128 + SIGKILL);
}

TEST(PrivateMachine, PassesArgumentsAndInputOn) {
  EXPECT_EQ(run_program({appliance, "--", "printf", "[%s]", "a b", "", "$c"}).out, "[a b][][$c]");
  EXPECT_EQ(run_program({"sh", "-c", R"(echo words | "$0" -- cat)", appliance}).out, "words\n");
}

TEST(PrivateMachine, PassesSignalsOn) {
  for (const std::string signal : {"TERM", "INT"}) {
    const std::string command =
        "trap 'echo got it; exit 5' " + signal + "; echo ready; while :; do sleep 0.05; done";
    // A shell makes its background commands ignore SIGINT.
    const Ended ended = run_program({"sh", "-c",
                                     R"(env --default-signal=INT "$0" -- sh -c "$1" >/tmp/log & machine=$!
                                        until grep -qs ready /tmp/log; do sleep 0.05; done
                                        kill -"$2" $machine; wait $machine)",
                                     appliance, command, signal});
    EXPECT_EQ(ended.status, 5) << signal;
    EXPECT_EQ(read_file("/tmp/log"), "ready\ngot it\n") << signal;
    Appliance{}.remove("/tmp/log");
  }
}

TEST(PrivateMachine, EndsWithItsCallerEvenWhenThatIsKilled) {
  const Ended ended = run_program({"sh", "-c",
                                   R"("$0" -- sleep 987 & machine=$!
                                      until grep -qs ^sleep /proc/[0-9]*/comm; do sleep 0.05; done
                                      kill -KILL $machine; wait $machine
                                      for i in 1 2 3 4 5 6 7 8 9 10; do
                                        grep -qs ^sleep /proc/[0-9]*/comm || exit 0
                                        sleep 0.1
                                      done
                                      exit 1)",
                                   appliance});
  EXPECT_EQ(ended.status, 0);
}

TEST(PrivateMachine, LeavesItsHostAlone) {
  Appliance{}
      .file("/mnt/HD/HD_a2/kept", "1")
      .file("/tmp/kept", "2")
      .file("/etc/exports", "3")
      .user("dora", 1010, 500);
  const std::string accounts_before = read_file("/etc/passwd");
  const std::string mounts_before = read_file("/proc/mounts");
  const Names devices_before = names_in("/dev");

  const Ended ended = inner("ls /mnt /home; test ! -e /tmp/kept || echo not covered; echo x >/etc/exports; "
                            "echo x >>/etc/passwd; rm /dev/null; "
                            "mkdir -p /mnt/HD/HD_a2; appliance-mount /dev/sda2 /mnt/HD/HD_a2; "
                            "appliance-disk sda scsi0 X; echo x >/tmp/kept; hostname other");
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out, "/home:\n\n/mnt:\n");
  EXPECT_EQ(read_file("/mnt/HD/HD_a2/kept"), "1");
  EXPECT_EQ(read_file("/tmp/kept"), "2");
  EXPECT_EQ(read_file("/etc/exports"), "3");
  EXPECT_EQ(read_file("/etc/passwd"), accounts_before);
  EXPECT_EQ(read_file("/proc/mounts"), mounts_before);
  EXPECT_EQ(names_in("/dev"), devices_before);
  EXPECT_EQ(read_file("/proc/sys/kernel/hostname"), "tarvo\n");
}

TEST(PrivateMachine, KeepsFoldersBelowACoveredOneReachable) {
  Appliance{}
      .file("/tmp/build/inner/file", "text")
      .file("/tmp/other", "hidden")
      .file("/home/p/run",
            "#!/bin/sh\ncat /tmp/build/inner/file\n[ ! -e /tmp/other ] || echo not covered\necho new "
            ">/tmp/build/made\n",
            0755);
  EXPECT_EQ(run_program({appliance, "--keep", "/tmp/build", "--", "/home/p/run"}).out, "text");
  EXPECT_EQ(read_file("/tmp/build/made"), "new\n");
}

TEST(PrivateMachine, SaysWhatIsWrongWithItsArguments) {
  EXPECT_EQ(run_program({appliance}).status, 125);
  EXPECT_EQ(run_program({appliance, "--keep", "/nowhere", "--", "true"}).err,
            "appliance: --keep /nowhere: no such folder\n");
  EXPECT_EQ(run_program({"env", "PATH=/usr/bin:/bin", appliance, "--", "no-such-command"}).status, 127);
}

} // namespace
} // namespace nasshare::tests
