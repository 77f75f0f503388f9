// Folders on USB disks are opened to everybody while smb.conf is written.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "share.h"
#include "smb_conf.h"
#include "text.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace nasshare::tests {
namespace {

void share(const std::string &path) {
  Insert_Smb_Node(Share{"Usb " + std::to_string(pss->count)}.path(path).everyone());
}

// The command runs in the background.
bool is_soon(const std::function<bool()> &true_now) {
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
  EXPECT_TRUE(is_soon([count] {
    const std::string calls = transcript();
    return std::ranges::count(calls, '\n') >= count;
  }));
  return transcript();
}

// What is printed about a share with that path; of the file services, a trace of their own.
void expect_listing_for(const std::string &path, const std::string &listing) {
  Free_All_List();
  share(path);
  expect_listing_and_trace([] { create_smb_conf(); }, listing, "afp nfs state is [0][0]\n" + listing);
}

TEST(UsbPermissions, AFolderOnAUsbDiskIsRepairedWithAllInIt) {
  Appliance{}.folder("/mnt/USB/usb1 (x)/films", 0700).file("/mnt/USB/usb1 (x)/films/one", "", 0600);
  share("/mnt/USB/usb1 (x)");
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_TRUE(is_soon([] {
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
  expect_listing_for("/mnt/USB/usb1 (x)", "before [/mnt/USB/usb1 (x)]\n"
                                          "after [/mnt/USB/usb1\\ \\(x\\)]\n"
                                          "chmod [chmod 777 -R /mnt/USB/usb1\\ \\(x\\) &]\n");
}

TEST(UsbPermissions, APathWithoutSpecialCharactersIsUsedAsItIs) {
  Appliance{}.command("chmod").folder("/mnt/USB/HD_c1");
  expect_listing_for("/mnt/USB/HD_c1", "before [/mnt/USB/HD_c1]\n"
                                       "after [/mnt/USB/HD_c1]\n"
                                       "chmod [chmod 777 -R /mnt/USB/HD_c1 &]\n");
  EXPECT_EQ(calls_of_chmod(4), repeated("chmod 777 -R /mnt/USB/HD_c1\n", 4))
      << "one for each value of the flag";
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
    expect_listing_for(path, "");
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
  EXPECT_TRUE(is_soon([] { return exists("/tmp/done"); }));
}

} // namespace
} // namespace nasshare::tests
