// Hidden partitions that do not take the catalogue as they should: whatever they are like, after 1 the next
// load shows the change, and after 0 it shows what was there.
#include "appliance.h"
#include "files.h"
#include "listed.h"
#include "music_and_docs.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr const char *first_partition = "/mnt/HD_a4";
constexpr const char *second_partition = "/mnt/HD_b4";

// So many bytes of comments and lists that the file takes several pages of a small disk.
Share large(const std::string &name, int volume) {
  std::string readers = "#alice#";
  while (readers.size() < 9000) {
    readers += ",#bob#";
  }
  return stored_share(name, volume).read(readers).deny("#nobody#");
}

Appliance volumes_with_room(const std::vector<Share> &shares) {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/mnt/HD/HD_b2/Docs")
      .folder("/mnt/HD/HD_a2/Films")
      .folder("/mnt/HD/HD_b2/Films")
      .command("smbcom")
      .shares(share_xml(shares));
}

Share films(const std::string &volume) {
  return Share{"Films"}.path("/mnt/HD/" + volume + "/Films").oplocks("yes").map_archive("no").everyone();
}

Names next_load() {
  get_samba_info();
  const Names shown = listed_shares();
  Free_All_List();
  return shown;
}

// The partition keeps its files, and has room for so many pages in all.
void make_small(const std::string &partition, int pages) {
  const std::string file = partition + "/.systemfile/.smb.xml";
  const std::string text = read_file(file);
  const std::string options = "size=" + std::to_string(pages * 4096);
  files::require(mount("small", partition.c_str(), "tmpfs", 0, options.c_str()) == 0, partition);
  Appliance{}.file(file, text);
}

void expect_left(const std::string &partition, const Names &names) {
  EXPECT_EQ(names_in(partition + "/.systemfile"), names) << partition;
}

// ---- Without room

TEST(FullPartition, WithRoomForOneFileTakesTheNewOne) {
  volumes_with_room({music(), docs(), large("Big", 1)});
  make_small(second_partition, 4); // two files need six
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Docs"), 1); }), "");
  EXPECT_EQ(next_load(), (Names{"Music", "Big"}));
  expect_on_both_volumes(share_xml({music(), large("Big", 1)}));
  expect_left(second_partition, {".smb.xml"});
}

TEST(FullPartition, WithoutRoomForTheNewFileRefusesAChangeOfItsOwnShares) {
  volumes_with_room({music(), docs()});
  make_small(second_partition, 2);
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(large("Films", 1)), 0); }), "CP: file copy error\n");
  EXPECT_EQ(next_load(), (Names{"Music", "Docs"}));
  expect_on_both_volumes(share_xml({music(), docs()}));
  expect_left(first_partition, {".smb.xml"});
  expect_left(second_partition, {".smb.xml"});
  EXPECT_EQ(transcript(), "");
}

TEST(FullPartition, WithoutRoomForTheNewFileLetsTheOthersChange) {
  volumes_with_room({music(), docs()});
  make_small(second_partition, 2);
  Share film = large("Films", 0);
  film.path("/mnt/HD/HD_a2/Films");
  EXPECT_EQ(output_of([&] { EXPECT_EQ(add_share(film), 1); }), "CP: file copy error\n");
  EXPECT_EQ(next_load(), (Names{"Music", "Films", "Docs"}));
  EXPECT_EQ(read_file(second_share_file), share_xml({music(), docs()}));
}

TEST(FullPartition, ThatIsTheOnlyOneKeepsItsFile) {
  Appliance::mirror()
      .folder("/mnt/HD/HD_a2/Films")
      .unmount(second_partition)
      .remove(second_partition)
      .shares(first_partition, share_xml({large("Big", 0)}));
  const std::string before = read_file(first_share_file);
  make_small(first_partition, 4);
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films("HD_a2")), 0); }), "CP: file copy error\n");
  EXPECT_EQ(read_file(first_share_file), before);
  expect_left(first_partition, {".smb.xml"});
}

TEST(FullPartition, KeepsABrokenFileRatherThanDeletingIt) {
  volumes_with_room({music(), large("Big", 1)});
  const std::string broken = read_file(second_share_file).substr(0, 9000);
  Appliance{}.file(second_share_file, broken);
  make_small(second_partition, 4);
  Share film = large("Films", 0);
  film.path("/mnt/HD/HD_a2/Films");
  EXPECT_EQ(output_of([&] { EXPECT_EQ(add_share(film), 1); }), "CP: file copy error\n");
  EXPECT_EQ(read_file(second_share_file), broken);
}

// ---- That cannot be written

TEST(ReadOnlyPartition, RefusesAChangeOfItsOwnShares) {
  volumes_with_room({music(), docs()}).read_only(second_partition);
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Docs"), 0); }), "CP: dest file exist and can't remove\n");
  EXPECT_EQ(next_load(), (Names{"Music", "Docs"}));
  expect_on_both_volumes(share_xml({music(), docs()}));
}

TEST(ReadOnlyPartition, LeavesTheOthersAsTheyWereAfterARefusal) {
  volumes_with_room({music(), docs()})
      .file(first_share_file, share_xml({music(), docs()}), 0600)
      .read_only(second_partition);
  ASSERT_EQ(::chown(first_share_file, 1000, 100), 0);
  EXPECT_EQ(del_share("Docs"), 0);
  EXPECT_EQ(mode(first_share_file), 0600U);
  EXPECT_EQ(owner(first_share_file), 1000U);
}

TEST(ReadOnlyPartition, LetsTheOthersChange) {
  volumes_with_room({music(), docs()}).read_only(second_partition);
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films("HD_a2")), 1); }),
            "CP: dest file exist and can't remove\n");
  EXPECT_EQ(next_load(), (Names{"Music", "Films", "Docs"}));
}

// What the load corrects anew each time does not count as a change.
TEST(ReadOnlyPartition, LetsTheOthersChangeThoughItsOwnNameUnknownAccounts) {
  volumes_with_room({music(), stored_share("Docs", 1).read("#alice#,#ghost#").deny("#nobody#")})
      .read_only(second_partition);
  EXPECT_EQ(del_share("Music"), 1);
  EXPECT_EQ(next_load(), (Names{"Docs"}));
}

TEST(ReadOnlyPartition, KeepsADeniedAccountDenied) {
  volumes_with_room({music(), stored_share("Docs", 1).write("#bob#").deny("#nobody#,#alice#")})
      .read_only(second_partition);
  insert_acnt_node("Docs", 2);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  get_samba_info();
  EXPECT_STREQ(pss->head->next->invalid_users, "#nobody#,#alice#");
}

// What never held a catalogue takes no part in a change.
TEST(NoPartition, IsNotReported) {
  Appliance machine = Appliance::single_disks();
  machine.folder("/mnt/HD/HD_a2/Films");
  for (const char *partition : {first_partition, second_partition}) {
    machine.unmount(partition).remove(partition);
  }
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films("HD_a2")), 1); }), "");
}

TEST(PartitionWithoutSystemFolder, DoesNotKeepTheOthersFromTakingTheFile) {
  volumes_with_room({docs()}).remove("/mnt/HD_a4/.systemfile");
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Docs"), 1); }), "CP: dest file exist and can't remove\n");
  EXPECT_EQ(next_load(), Names{});
}

// ---- Odd ones

TEST(OddPartition, WithAFolderInTheSuccessorsPlaceTakesTheNewFile) {
  volumes_with_room({music(), docs()}).folder("/mnt/HD_a4/.systemfile/.smb.xml.new/x");
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Music"), 1); }), "");
  EXPECT_EQ(next_load(), (Names{"Docs"}));
  expect_left(first_partition, {".smb.xml", ".smb.xml.new"});
}

TEST(OddPartition, ThatIsAFileIsSkipped) {
  volumes_with_room({music(), docs()}).file("/mnt/HD_x", "a file");
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Music"), 1); }), "CP: can't stat dest\n");
  EXPECT_EQ(next_load(), (Names{"Docs"}));
  EXPECT_EQ(read_file("/mnt/HD_x"), "a file");
}

TEST(OddPartition, WithAFolderInTheFilesPlaceRefusesAChangeOfItsOwnShares) {
  volumes_with_room({music(), docs()})
      .remove(second_share_file)
      .folder(std::string(second_share_file) + "/x");
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films("HD_b2")), 0); }),
            "CP: dest file exist and can't remove\n");
  EXPECT_EQ(next_load(), (Names{"Music"}));
  EXPECT_TRUE(exists(std::string(second_share_file) + "/x"));
}

// A file that is mounted over cannot be replaced, only written.
TEST(OddPartition, WithAMountedFileTakesTheNewFileInIt) {
  volumes_with_room({music(), docs()}).file("/run/other.xml", share_xml({music(), docs()}));
  ASSERT_EQ(::mount("/run/other.xml", second_share_file, "", MS_BIND, nullptr), 0);
  EXPECT_EQ(output_of([] { EXPECT_EQ(del_share("Docs"), 1); }), "");
  EXPECT_EQ(next_load(), (Names{"Music"}));
  EXPECT_EQ(read_file("/run/other.xml"), share_xml({music()}));
}

} // namespace
} // namespace nasshare::tests
