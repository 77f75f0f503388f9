// Folders on USB disks are opened to everybody while smb.conf is written.
#include "nasshare/support.h"
#include "output.h"
#include "share.h"
#include "smb_conf.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <thread>

namespace nasshare::tests {
namespace {

void share(const std::string &path) {
  Insert_Smb_Node(Share{"Usb " + std::to_string(pss->count)}.path(path).everyone());
}

// The command runs in the background.
bool soon(const std::function<bool()> &true_now) {
  for (int i = 0; i < 1000; ++i) {
    if (true_now()) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

// What chmod was called with once it was called that often.
std::string calls_of_chmod(long count) {
  EXPECT_TRUE(soon([count] {
    const std::string calls = transcript();
    return std::count(calls.begin(), calls.end(), '\n') >= count;
  }));
  return transcript();
}

std::string printed_for(const std::string &path) {
  Free_All_List();
  share(path);
  smb_dbg_flag = 2;
  return output_of([] { create_smb_conf(); });
}

TEST(UsbPermissions, AFolderOnAUsbDiskIsRepairedWithAllInIt) {
  Appliance{}.folder("/mnt/USB/usb1 (x)/films", 0700).file("/mnt/USB/usb1 (x)/films/one", "", 0600);
  share("/mnt/USB/usb1 (x)");
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_TRUE(soon([] {
    return mode("/mnt/USB/usb1 (x)") == 0777 && mode("/mnt/USB/usb1 (x)/films") == 0777 &&
           mode("/mnt/USB/usb1 (x)/films/one") == 0777;
  }));
}

TEST(UsbPermissions, ThePathIsWrittenWithoutTheShellsBackslashes) {
  Appliance{}.command("chmod").folder("/mnt/USB/usb1 (x)");
  share("/mnt/USB/usb1 (x)");
  EXPECT_NE(generated_sections().find("\npath = /mnt/USB/usb1 (x)\n"), std::string::npos);
  EXPECT_STREQ(pss->head->path, "/mnt/USB/usb1 (x)");
  EXPECT_EQ(calls_of_chmod(1), "chmod 777 -R /mnt/USB/usb1 (x)\n");
}

TEST(UsbPermissions, TheRepairIsPrintedForAnyDebugFlagButZero) {
  Appliance{}.command("chmod").folder("/mnt/USB/usb1 (x)");
  share("/mnt/USB/usb1 (x)");
  const std::string repair = "before [/mnt/USB/usb1 (x)]\n"
                             "after [/mnt/USB/usb1\\ \\(x\\)]\n"
                             "chmod [chmod 777 -R /mnt/USB/usb1\\ \\(x\\) &]\n";
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { create_smb_conf(); }), flag == 0   ? ""
                                                    : flag == 1 ? "afp nfs state is [0][0]\n" + repair
                                                                : repair);
  }
}

TEST(UsbPermissions, APathWithoutSpecialCharactersIsUsedAsItIs) {
  Appliance{}.command("chmod").folder("/mnt/USB/HD_c1");
  EXPECT_EQ(printed_for("/mnt/USB/HD_c1"), "before [/mnt/USB/HD_c1]\n"
                                           "after [/mnt/USB/HD_c1]\n"
                                           "chmod [chmod 777 -R /mnt/USB/HD_c1 &]\n");
  EXPECT_EQ(calls_of_chmod(1), "chmod 777 -R /mnt/USB/HD_c1\n");
}

TEST(UsbPermissions, OtherFoldersAreLeftAlone) {
  Appliance{}
      .command("chmod")
      .folder("/mnt/HD/HD_a2/music")
      .folder("/mnt/HD/HD_c2")
      .folder("/mnt/USB2/x")
      .folder("/mnt/usb/x")
      .folder("/mnt/USB");
  for (const char *path : {"/mnt/HD/HD_a2", "/mnt/HD/HD_c2", "/mnt/HD/HD_a2/music", "/mnt/USB2/x",
                           "/mnt/usb/x", "/mnt/USB", "/mnt/USB/absent", ""}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(printed_for(path), "");
  }
  EXPECT_EQ(transcript(), "");
}

TEST(UsbPermissions, TheMountPointMayStandAnywhereInThePath) {
  Appliance{}.command("chmod").folder("/mnt/HD/HD_a2/mnt/USB/x").file("/mnt/USB/file", "");
  share("/mnt/HD/HD_a2/mnt/USB/x");
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(calls_of_chmod(1), "chmod 777 -R /mnt/HD/HD_a2/mnt/USB/x\n");
  Free_All_List();
  share("/mnt/USB/file");
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(calls_of_chmod(2), "chmod 777 -R /mnt/HD/HD_a2/mnt/USB/x\nchmod 777 -R /mnt/USB/file\n");
}

TEST(UsbPermissions, SpecialCharactersReachTheCommandAsTheyAre) {
  const std::string path = "/mnt/USB/$HOME`id`#%^&()+{};[]'= $(id)";
  Appliance{}.command("chmod").folder(path);
  share(path);
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(calls_of_chmod(1), "chmod 777 -R " + path + "\n");
}

TEST(UsbPermissions, ALongPathReachesTheCommandWhole) {
  Appliance appliance;
  std::string path = "/mnt/USB";
  for (int i = 0; i < 15; ++i) {
    path += "/" + std::string(254, '(');
  }
  ASSERT_LT(path.size(), 4096U);
  appliance.command("chmod").folder(path);
  share(path);
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_EQ(calls_of_chmod(1), "chmod 777 -R " + path + "\n");
}

TEST(UsbPermissions, AFailingCommandDoesNotStopTheWriting) {
  Appliance{}.command("chmod", "", 1).folder("/mnt/USB/a").folder("/mnt/USB/b");
  share("/mnt/USB/a");
  share("/mnt/USB/b");
  EXPECT_NE(generated_sections().find("path = /mnt/USB/b\n"), std::string::npos);
  EXPECT_NE(calls_of_chmod(2).find("chmod 777 -R /mnt/USB/b\n"), std::string::npos);
}

TEST(UsbPermissions, TheCommandRunsInTheBackground) {
  Appliance{}
      .script("chmod", "while ! [ -e /tmp/go ]; do sleep 0.05; done; : >/tmp/done")
      .folder("/mnt/USB/a");
  share("/mnt/USB/a");
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_FALSE(exists("/tmp/done"));
  Appliance{}.file("/tmp/go", "");
  EXPECT_TRUE(soon([] { return exists("/tmp/done"); }));
}

} // namespace
} // namespace nasshare::tests
