// What the tests rely on in their harness.
#include "appliance.h"
#include "nasshare/platform.h"
#include "output.h"
#include "share.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

TEST(StandInCommands, AreListedInTheTranscriptInOrder) {
  Appliance{}.command("wbinfo", "alice\nbob\n", 3, "trouble\n");
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(std::system("smbcom"), 0);
  const Ended ended = run_program({"wbinfo", "-u", "two words"});
  EXPECT_EQ(ended.out, "alice\nbob\n");
  EXPECT_EQ(ended.err, "trouble\n");
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(transcript(), "smbcom\nwbinfo -u two words\n");
}

TEST(StandInCommands, MayHaveABodyOfTheirOwn) {
  Appliance{}.script("kinit", "read secret; echo \"$1 $secret\"");
  EXPECT_EQ(run_program({"sh", "-c", "echo pw | kinit name"}).out, "name pw\n");
}

TEST(StandInCommands, MayRunTheRealOne) {
  Appliance{}.logged("chmod").file("/tmp/file", "", 0600);
  EXPECT_EQ(std::system("chmod 777 /tmp/file"), 0);
  EXPECT_EQ(mode("/tmp/file"), 0777U);
  EXPECT_EQ(transcript(), "chmod 777 /tmp/file\n");
}

TEST(StandInCommands, MayBeMissingAltogether) {
  Appliance{}.no_command("sg_scan").no_command("chmod");
  EXPECT_EQ(run_program({"sh", "-c", "sg_scan"}).status, 127);
  EXPECT_EQ(run_program({"sh", "-c", "chmod 777 /tmp"}).status, 127);
  EXPECT_EQ(run_program({"sh", "-c", "ls /tmp"}).status, 0);
}

TEST(Output, IsCaughtByDescriptor) {
  Captured captured;
  std::printf("printed\n");
  EXPECT_EQ(std::system("echo by a child; echo elsewhere >&2"), 0);
  EXPECT_EQ(captured.out(), "printed\nby a child\n");
  EXPECT_EQ(captured.err(), "elsewhere\n");
}

TEST(Output, OfAFunctionThatEndsItsProcess) {
  const Ended ended = run_to_exit([] {
    std::printf("last words");
    std::exit(255);
  });
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(ended.out, "last words");
  EXPECT_TRUE(run_to_exit([] {}).returned);
}

TEST(Configuration, IsReadByThePlatform) {
  Appliance{}
      .config("/system_mgr/samba/workgroup", "HOME & <garden>")
      .config("/system_mgr/samba/dfs_enable", "1")
      .config("/hw_ver", "T2")
      .config("/hw_ver", "T3");
  EXPECT_EQ(stored_value("/system_mgr/samba/workgroup"), "HOME & <garden>");
  EXPECT_EQ(xml_get_int("/system_mgr/samba/dfs_enable"), 1);
  EXPECT_EQ(stored_value("/hw_ver"), "T3");
}

TEST(Accounts, CanBeReplaced) {
  Appliance{}.no_accounts().user("dora", 1010, 600).group("friends", 600, {"dora", "emil"});
  EXPECT_EQ(run_program({"getent", "passwd"}).out, "root:x:0:0:root:/root:/bin/sh\n"
                                                   "nobody:x:65534:65534:nobody:/:/bin/false\n"
                                                   "dora:x:1010:600::/home/dora:/bin/sh\n");
  EXPECT_EQ(run_program({"getent", "group", "friends"}).out, "friends:x:600:dora,emil\n");
}

TEST(ShareXml, HasTheStoredForm) {
  EXPECT_EQ(share_xml({}), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n  <samba/>\n</config>\n");
  EXPECT_EQ(
      share_xml({Share{"R&B"}.path("/mnt/HD/HD_a2/rb").everyone().oplocks("no").recycle(1).on_disk("WD-1")}),
      R"(<?xml version="1.0" encoding="UTF-8"?>
<config>
  <samba>
    <count>1</count>
    <item>
      <volume_raid>1</volume_raid>
      <hd_serial>WD-1</hd_serial>
      <name>R&amp;B</name>
      <comment/>
      <path>/mnt/HD/HD_a2/rb</path>
      <browseable/>
      <public/>
      <oplocks>no</oplocks>
      <map_archive/>
      <read_list/>
      <write_list>#nobody#,#@allaccount#</write_list>
      <invalid_users/>
      <recycle_enable>1</recycle_enable>
      <recycle_tree>0</recycle_tree>
    </item>
  </samba>
</config>
)");
}

TEST(ReadyMade, MirrorIsMountedAndReported) {
  Appliance::mirror();
  EXPECT_NE(read_file("/etc/mtab").find("\n/dev/md1 /mnt/HD/HD_a2 "), std::string::npos);
  EXPECT_NE(run_program({"mdadm", "-D", "/dev/md1"}).out.find("UUID : 7cc3a0e9:85fa470b:aecd3d11:561a7e11"),
            std::string::npos);
  EXPECT_EQ(names_in("/mnt"), (Names{"HD", "HD_a4", "HD_b4"}));
}

TEST(TestProgram, RefusesToRunOutsideAPrivateMachine) {
  Appliance{}.remove("/run/appliance/private");
  const Ended ended = run_program({std::filesystem::read_symlink("/proc/self/exe"), "--gtest_list_tests"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.err.find("run only inside a private machine"), std::string::npos);
}

TEST(TestProgram, RefusesToRunTwoCasesInOneMachine) {
  EXPECT_EQ(
      run_program({std::filesystem::read_symlink("/proc/self/exe"), "--gtest_filter=PrivateMachine.Has*"})
          .status,
      2);
}

} // namespace
} // namespace nasshare::tests
