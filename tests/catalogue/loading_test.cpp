// Loading the catalogue: get_samba_info, get_samba_info2 and check_hd.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "nasshare/volume.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "volume_table.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

Share on_first(const char *name) {
  return stored_share(name, 0).everyone();
}

Share on_second(const char *name) {
  return stored_share(name, 1).everyone();
}

// Both volumes' files hold every share, as the library writes them.
Appliance two_volumes(const std::vector<Share> &shares) {
  return Appliance::single_disks()
      .config("/system_mgr/samba/netbios_name", "ATTIC")
      .shares(share_xml(shares));
}

Names oplocks() {
  Names values;
  for (const smb_share *share : nodes_of(smbshare)) {
    values.push_back(std::string(share->name) + " " + share->oplocks);
  }
  return values;
}

// What two_volumes and a USB disk print while they are loaded, up to the share files.
std::string discovery_output(const std::string &usb_line, const std::string &disk_map) {
  return usb_line +
         "volume_mount_point [/dev/sda2]\n"
         "volume_mount_point [/dev/sdb2]\n"
         "\n"
         "Volume_1 [1]\n"
         "Volume_2 [1]\n"
         "\n"
         "hidden_1 [1]\n"
         "hidden_2 [1]\n"
         "\n"
         "usb 0 exist [1]\n" +
         disk_map +
         "volume number = 2\n"
         "hd number     = 2\n"
         "\n"
         "\n"
         "Volume_1 raid type [1]\n"
         "Volume_1 raid uuid []\n"
         "Volume_1 comp str  [WD-TESTDISK0001]\n"
         "Volume_1 which hd  [0][sda]\n"
         "Volume_1 hidden in [/mnt/HD_a4]\n"
         "\n"
         "Volume_2 raid type [1]\n"
         "Volume_2 raid uuid []\n"
         "Volume_2 comp str  [WD-TESTDISK0002]\n"
         "Volume_2 which hd  [1][sdb]\n"
         "Volume_2 hidden in [/mnt/HD_b4]\n"
         "\n";
}

// Loads, with both volumes marked so once discovery is done: the file of the volumes' names, which is read
// next, waits for this program to write it.
void load_with_volumes_marked(int mark, void (*load)()) {
  const std::string names = "/etc/shared_name";
  Appliance{}.remove(names);
  ASSERT_EQ(mkfifo(names.c_str(), 0644), 0);
  std::thread marker([&names, mark] {
    const int file = open(names.c_str(), O_WRONLY | O_CLOEXEC); // waits for the reader
    std::ranges::fill(pss->vol_present, mark);
    dprintf(file, "USBDisk1_1 = HD_c1\n");
    close(file);
  });
  load();
  marker.join();
}

TEST(Loading, ListsTheFirstVolumeThenTheSecondThenUsbDisks) {
  two_volumes({on_second("Docs"), on_first("Music"), on_second("Films"), on_first("Photos")})
      .mount("/dev/sdc1", "/mnt/USB/HD_c2")
      .mount("/dev/sdd1", "/mnt/USB/HD_d1");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Music", "Photos", "Docs", "Films", "USBDisk1_1", "USBDisk1_2"}));
  EXPECT_STREQ(pss->tail->path, "/mnt/USB/HD_c2");
}

TEST(Loading, ReplacesAnEarlierList) {
  two_volumes({on_first("Music")});
  Insert_Smb_Node(on_first("Left"));
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Music"}));
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Music"}));
}

TEST(Loading, KeepsNothingBetweenCalls) {
  Appliance machine = two_volumes({on_first("Music")}).shared_name("Media = HD_a2\n");
  get_samba_info();
  EXPECT_STREQ(pss->vol_share_name[0], "Media");
  machine.shares("/mnt/HD_a4", share_xml({on_first("Films")}))
      .shared_name("Attic = HD_a2\n")
      .config("/system_mgr/samba/workgroup", "OTHER");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Films"}));
  EXPECT_STREQ(pss->vol_share_name[0], "Attic");
  EXPECT_STREQ(pss->workgroup, "OTHER");
}

TEST(Loading, ReadsAMirrorsShares) {
  const std::string uuid = "7cc3a0e9:85fa470b:aecd3d11:561a7e11";
  Appliance::mirror().shares(
      "/mnt/HD_a4",
      share_xml({Share{"Music"}.path("/mnt/HD/HD_a2/Music").on_array(4, uuid).everyone(),
                 Share{"Other"}.path("/mnt/HD/HD_a2/Other").on_array(4, "1:2:3:4").everyone()}));
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Music"}));
}

TEST(Loading, NamesVolumeRootsBeforeTheShareFilesAreRead) {
  two_volumes({Share{"Volume_1"}.path("/mnt/HD/HD_a2").on_disk("WD-TESTDISK0001").everyone()})
      .shared_name("Media = HD_a2\n");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Media"}));
}

TEST(Loading, OfAVolumeWithoutItsFileFindsNoShares) {
  two_volumes({on_first("Music"), on_second("Docs")}).remove(first_share_file);
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Docs"}));
}

TEST(Loading, OfAnUnreadableFileFindsNoShares) {
  Appliance machine = two_volumes({on_second("Docs")});
  for (const char *text : {"", "no XML", "<config><samba><item>", "<config/>", "<config><samba/></config>"}) {
    SCOPED_TRACE(text);
    machine.shares("/mnt/HD_a4", text);
    Captured captured;
    get_samba_info();
    EXPECT_EQ(captured.out(), "");
    EXPECT_EQ(captured.err(), "");
    EXPECT_EQ(listed_shares(), (Names{"Docs"}));
  }
}

TEST(Loading, OfAVolumeThatIsNotMountedFindsNoShares) {
  two_volumes({on_first("Music"), on_second("Docs")}).unmount("/mnt/HD/HD_a2");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Docs"}));
}

TEST(Loading, CountsOnlyVolumesThatAreMarkedOneAsPresent) {
  two_volumes({on_first("Music"), on_second("Docs")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  for (const int mark : {2, 0, -1}) {
    load_with_volumes_marked(mark, get_samba_info);
    EXPECT_EQ(listed_shares(), (Names{"USBDisk1_1"})) << mark;
  }
  Free_All_List();
  load_with_volumes_marked(2, check_hd);
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(Loading, WithoutShareFilesListsOnlyUsbDisks) {
  Appliance::single_disks().mount("/dev/sdc1", "/mnt/USB/HD_c1").mount("/dev/sdc5", "/mnt/USB/HD_c");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"USBDisk1_1", "USBDisk1_c"}));
}

TEST(Loading, DropsUnknownAccountsAndSharesLeftEmpty) {
  two_volumes({on_first("Music").write("").read("#alice#,#ghost#,#@staff#,#@ghosts#"),
               on_second("Gone").write("#ghost#"), on_second("Docs").write("#bob#,#ghost#")});
  get_samba_info();
  ASSERT_EQ(listed_shares(), (Names{"Music", "Docs"}));
  EXPECT_STREQ(pss->head->read_list, "#alice#,#@staff#");
  EXPECT_STREQ(pss->tail->write_list, "#bob#");
}

TEST(Loading, AddsUsbDisksAfterTheAccountsWereChecked) {
  two_volumes({on_first("USBDisk1_1").write("#ghost#")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  get_samba_info();
  ASSERT_EQ(listed_shares(), (Names{"USBDisk1_1"}));
  EXPECT_STREQ(pss->head->path, "/mnt/USB/HD_c1");
  EXPECT_STREQ(pss->head->write_list, everyone);
}

TEST(Loading, LeavesANameToTheVolumesShareThatHasIt) {
  two_volumes({on_first("USBDisk1_1")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  get_samba_info();
  ASSERT_EQ(listed_shares(), (Names{"USBDisk1_1"}));
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/USBDisk1_1");
}

TEST(Loading, ReadsTheDomainsFileInDomainModeAndChecksNoAccounts) {
  two_volumes({on_first("Local")})
      .ads_shares("/mnt/HD_a4", share_xml({on_first("Domain").write("#corpuser#")}))
      .config("/system_mgr/samba/ads_enable", "1");
  get_samba_info();
  ASSERT_EQ(listed_shares(), (Names{"Domain"}));
  EXPECT_STREQ(pss->head->write_list, "#corpuser#");
}

TEST(Loading, GoesBackToTheLocalFileWhenDomainModeEnds) {
  Appliance machine = two_volumes({on_first("Local")})
                          .ads_shares("/mnt/HD_a4", share_xml({on_first("Domain")}))
                          .config("/system_mgr/samba/ads_enable", "1");
  get_samba_info();
  machine.config("/system_mgr/samba/ads_enable", "2");
  get_samba_info();
  EXPECT_EQ(listed_shares(), (Names{"Local"}));
}

TEST(Loading, ChangesNoShareFile) {
  two_volumes({on_first("Music").write("#ghost#"), on_first("Docs")});
  const std::string before = read_file(first_share_file);
  get_samba_info2();
  EXPECT_EQ(read_file(first_share_file), before);
  EXPECT_EQ(transcript(), "");
}

TEST(Loading, ReadsTheSettingsBeforeItLooksForVolumes) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  const Ended ended = run_to_exit(get_samba_info);
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
  EXPECT_EQ(stored_value("/system_mgr/samba/netbios_name"), "tarvo-a1b2");
}

TEST(Loading, PrintsEveryStepInOrder) {
  Appliance machine =
      two_volumes({on_first("Music").write("#alice#"), on_first("Shared").read("#bob#,#nobody#"),
                   on_second("Docs").tag(2, "WD-TESTDISK0001")})
          .hardware_address("02:00:00:0a:1b:02")
          .shared_name("Media = HD_a2\nUSBStick = HD_c1\n")
          .mount("/dev/sdc1", "/mnt/USB/HD_c1")
          .remove(second_share_file);
  const auto load_unnamed = [&machine] {
    machine.config("/system_mgr/samba/netbios_name", "");
    get_samba_info();
  };
  const std::string name = "mac[tarvo-a1b2]\n";
  const std::string shares = "share name HD_a2=[Media]\n"
                             "share name HD_b2=[]\n"
                             "i=0, [HD_c1]\n"
                             "read_HD_xml: read xml path = /mnt/HD_a4/.systemfile/.smb.xml\n"
                             "xxxxxxxxxxxxxxxxx[/mnt/HD/HD_b2/Docs][0]\n"
                             "read_HD_xml: read xml path = /mnt/HD_b4/.systemfile/.smb.xml\n"
                             "read_HD_xml: read path not exist = /mnt/HD_b4/.systemfile/.smb.xml\n"
                             " read from LIST = bob\n"
                             " read from LIST = nobody\n";
  expect_listing_and_trace(load_unnamed, name + discovery_output("", "") + shares,
                           name + discovery_output("USB no [1]\n", disk_map_trace) + shares);
}

TEST(Loading, LeavesTheTracesOutForAFlagOtherThanOne) {
  two_volumes({on_first("Music")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  const std::string files = "read_HD_xml: read xml path = /mnt/HD_a4/.systemfile/.smb.xml\n"
                            "read_HD_xml: read xml path = /mnt/HD_b4/.systemfile/.smb.xml\n";
  expect_listing_and_trace(get_samba_info, discovery_output("", "") + files,
                           discovery_output("USB no [1]\n", disk_map_trace) + files);
}

TEST(Loading, PrintsNothingWithoutTheFlag) {
  two_volumes({on_first("Music"), on_second("Docs")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(output_of(get_samba_info), "");
  EXPECT_EQ(output_of(check_hd), "");
  EXPECT_EQ(output_of(get_samba_info2), "");
}

TEST(LoadingWithoutChecks, KeepsUnknownAccountsAndAddsNoUsbDisk) {
  two_volumes({on_first("Music").write("#ghost#"), on_second("Docs")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  check_hd();
  ASSERT_EQ(listed_shares(), (Names{"Music", "Docs"}));
  EXPECT_STREQ(pss->head->write_list, "#ghost#");
  EXPECT_EQ(pss->usb_exist[0], 1);
}

TEST(LoadingWithoutChecks, AddsToTheListAsItIs) {
  two_volumes({on_first("Music"), on_second("Docs")});
  Insert_Smb_Node(on_second("Left"));
  Insert_Smb_Node(on_first("Music").comment("mine"));
  check_hd();
  EXPECT_EQ(listed_shares(), (Names{"Left", "Music", "Docs"}));
  EXPECT_STREQ(pss->head->next->comment, "mine");
}

TEST(LoadingWithoutChecks, ReadsSettingsAndShareNames) {
  two_volumes({on_first("Music")})
      .shared_name("Media = HD_a2\n")
      .config("/system_mgr/samba/workgroup", "HOME")
      .config("/system_mgr/samba/ads_enable", "1")
      .ads_shares("/mnt/HD_a4", share_xml({on_first("Domain")}));
  check_hd();
  EXPECT_STREQ(pss->vol_share_name[0], "Media");
  EXPECT_STREQ(pss->workgroup, "HOME");
  EXPECT_EQ(listed_shares(), (Names{"Domain"}));
}

TEST(LoadingForTheWriter, TurnsOplocksOffEverywhereWhileAfpIsOn) {
  two_volumes({on_first("Music"), on_second("Docs").oplocks("yes")})
      .mount("/dev/sdc1", "/mnt/USB/HD_c1")
      .config("/system_mgr/afp/enable", "1");
  get_samba_info2();
  EXPECT_EQ(oplocks(), (Names{"Music no", "Docs no", "USBDisk1_1 no"}));
}

TEST(LoadingForTheWriter, TurnsOplocksOffForWhatNfsExports) {
  two_volumes({on_first("Music"), on_second("Docs"), on_second("Films").oplocks("no")})
      .mount("/dev/sdc1", "/mnt/USB/HD_c1")
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_b2/Docs\" *(rw)\n\"/mnt/USB/HD_c1\" *(ro)\n\"/mnt/HD/HD_a2/Music/\" *(ro)\n");
  get_samba_info2();
  EXPECT_EQ(oplocks(), (Names{"Music yes", "Docs no", "Films no", "USBDisk1_1 no"}));
}

TEST(LoadingForTheWriter, KeepsOplocksWhileBothServicesAreOff) {
  Appliance machine =
      two_volumes({on_first("Music"), on_second("Docs").oplocks("no"), on_second("Films").oplocks("")})
          .exports("\"/mnt/HD/HD_a2/Music\" *(rw)\n");
  for (const char *value : {"", "0", "2", "-1", "on"}) {
    machine.config("/system_mgr/afp/enable", value).config("/system_mgr/nfs/enable", value);
    get_samba_info2();
    EXPECT_EQ(oplocks(), (Names{"Music yes", "Docs no", "Films "})) << value;
  }
}

TEST(LoadingForTheWriter, KeepsOplocksWithoutAnExportsFile) {
  two_volumes({on_first("Music")}).config("/system_mgr/nfs/enable", "1");
  get_samba_info2();
  EXPECT_EQ(oplocks(), (Names{"Music yes"}));
}

TEST(LoadingForTheWriter, ChangesOplocksInMemoryOnly) {
  two_volumes({on_first("Music")}).config("/system_mgr/afp/enable", "1");
  const std::string before = read_file(first_share_file);
  get_samba_info2();
  EXPECT_EQ(read_file(first_share_file), before);
  EXPECT_EQ(pss->list_changed, 0);
  get_samba_info();
  EXPECT_EQ(oplocks(), (Names{"Music yes"}));
}

TEST(LoadingForTheWriter, LeavesTheCheckedCatalogueLoaded) {
  two_volumes({on_first("Music"), on_first("Gone").write("#ghost#")}).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  Insert_Smb_Node(on_first("Left"));
  get_samba_info2();
  EXPECT_EQ(listed_shares(), (Names{"Music", "USBDisk1_1"}));
}

TEST(LoadingForTheWriter, ComparesSharesWithExportsInListOrder) {
  two_volumes({on_second("Docs"), on_first("Music")})
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_a2/Music\" *(rw)\n\"/mnt/HD/HD_b2/Other\" *(rw)\n");
  const std::string comparisons = "get_nfs_path---->[/mnt/HD/HD_a2/Music]\n"
                                  "compare path---->[/mnt/HD/HD_a2/Music]\n"
                                  "get_nfs_path---->[/mnt/HD/HD_a2/Music]\n"
                                  "compare path---->[/mnt/HD/HD_b2/Docs]\n"
                                  "get_nfs_path---->[/mnt/HD/HD_b2/Other]\n"
                                  "compare path---->[/mnt/HD/HD_b2/Docs]\n";
  expect_output(get_samba_info2, [&comparisons](int flag) {
    return output_of(get_samba_info) + (flag == 1 ? comparisons : "");
  });
}

TEST(LoadingForTheWriter, DoesNotAskForExportsWhileAfpIsOn) {
  two_volumes({on_first("Music")})
      .config("/system_mgr/afp/enable", "1")
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_a2/Music\" *(rw)\n");
  expect_output(get_samba_info2, [](int /*flag*/) { return output_of(get_samba_info); });
}

} // namespace
} // namespace nasshare::tests
