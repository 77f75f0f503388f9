// The share XML in the hidden system folders: hidden_filter_dir, cp_xml_to_hidden, remove_hidden_smbxml.
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>

namespace nasshare::tests {
namespace {

int filtered(const std::string &name) {
  dirent entry = {};
  put(entry.d_name, name);
  return hidden_filter_dir(&entry);
}

Appliance two_hidden_partitions() {
  return Appliance{}.hidden("/dev/sda4", "/mnt/HD_a4").hidden("/dev/sdb4", "/mnt/HD_b4");
}

// A hidden partition with room for nothing more than the given old share XML.
void add_full_partition(Appliance &machine, const std::string &folder, const std::string &old_xml) {
  machine.folder(folder);
  ASSERT_EQ(::mount("/dev/sdc4", folder.c_str(), "tmpfs", 0, "size=16k"), 0);
  machine.shares(folder, old_xml);
  EXPECT_THROW(machine.file(folder + "/filling", std::string(65536, '.')), std::exception);
}

TEST(HiddenFolderFilter, AcceptsNamesThatBeginWithHdAndUnderscore) {
  for (const char *name : {"HD_a4", "HD_b4", "HD_", "HD_anything", "HD_a4.old"}) {
    EXPECT_EQ(filtered(name), 1) << name;
  }
  EXPECT_EQ(filtered("HD_" + std::string(252, 'x')), 1);
}

TEST(HiddenFolderFilter, RejectsEveryOtherName) {
  for (const char *name :
       {".", "..", "", "HD", "USB", "hd_a4", "xHD_a4", " HD_a4", "HDD_a4", ".HD_a4", "ISO"}) {
    EXPECT_EQ(filtered(name), 0) << name;
  }
  EXPECT_EQ(hidden_filter_dir(nullptr), 0);
}

TEST(CopyToHidden, PutsTheTemporaryFileIntoEveryHiddenFolder) {
  Appliance{}
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .hidden("/dev/sdb4", "/mnt/HD_b4")
      .folder("/mnt/HD_z9/.systemfile")
      .file(temporary_share_file, "<config/>\n");
  cp_xml_to_hidden();
  EXPECT_EQ(read_file(first_share_file), "<config/>\n");
  EXPECT_EQ(read_file(second_share_file), "<config/>\n");
  EXPECT_EQ(read_file("/mnt/HD_z9/.systemfile/.smb.xml"), "<config/>\n");
  EXPECT_EQ(read_file(temporary_share_file), "<config/>\n");
}

TEST(CopyToHidden, LeavesNothingElseBehind) {
  two_hidden_partitions()
      .file(temporary_share_file, "<config/>\n")
      .file("/mnt/HD_a4/.systemfile/other", "kept");
  cp_xml_to_hidden();
  EXPECT_EQ(names_in("/mnt/HD_a4/.systemfile"), (Names{".smb.xml", "other"}));
  EXPECT_EQ(names_in("/mnt/HD_b4/.systemfile"), (Names{".smb.xml"}));
}

TEST(CopyToHidden, LeavesOtherFoldersAlone) {
  two_hidden_partitions()
      .folder("/mnt/HD/.systemfile")
      .folder("/mnt/USB/.systemfile")
      .folder("/mnt/xHD_a4/.systemfile")
      .file(temporary_share_file, "<config/>\n");
  cp_xml_to_hidden();
  for (const char *folder : {"/mnt/HD/.systemfile", "/mnt/USB/.systemfile", "/mnt/xHD_a4/.systemfile"}) {
    EXPECT_EQ(names_in(folder), Names{}) << folder;
  }
}

TEST(CopyToHidden, GivesTheFileOfTheModeInForce) {
  const struct {
    int ads_enable;
    const char *written;
    const char *kept;
  } rows[] = {
      {1, ".smb_ads.xml", ".smb.xml"}, {0, ".smb.xml", ".smb_ads.xml"}, {2, ".smb.xml", ".smb_ads.xml"}};
  Appliance machine = two_hidden_partitions().file(temporary_share_file, "new");
  for (const auto &row : rows) {
    SCOPED_TRACE(row.ads_enable);
    machine.shares("/mnt/HD_a4", "old").ads_shares("/mnt/HD_a4", "old");
    pss->ads_enable = row.ads_enable;
    cp_xml_to_hidden();
    EXPECT_EQ(read_file(std::string("/mnt/HD_a4/.systemfile/") + row.written), "new");
    EXPECT_EQ(read_file(std::string("/mnt/HD_a4/.systemfile/") + row.kept), "old");
  }
}

TEST(CopyToHidden, MakesANewFileWithTheModeOfTheTemporaryOne) {
  Appliance machine = two_hidden_partitions()
                          .file(first_share_file, "a much longer old file", 0600)
                          .file(temporary_share_file, "new", 0640);
  machine.folder("/mnt/HD_a4/links");
  ASSERT_EQ(::link(first_share_file, "/mnt/HD_a4/links/old"), 0);
  cp_xml_to_hidden();
  EXPECT_EQ(read_file(first_share_file), "new");
  EXPECT_EQ(mode(first_share_file), 0640U);
  EXPECT_EQ(mode(second_share_file), 0640U);
  EXPECT_EQ(read_file("/mnt/HD_a4/links/old"), "a much longer old file");
}

TEST(CopyToHidden, ReplacesALinkAndNotWhatItLeadsTo) {
  two_hidden_partitions()
      .file("/mnt/elsewhere", "kept")
      .link("/mnt/elsewhere", first_share_file)
      .file(temporary_share_file, "new");
  cp_xml_to_hidden();
  struct stat status = {};
  ASSERT_EQ(::lstat(first_share_file, &status), 0);
  EXPECT_TRUE(S_ISREG(status.st_mode));
  EXPECT_EQ(read_file(first_share_file), "new");
  EXPECT_EQ(read_file("/mnt/elsewhere"), "kept");
}

TEST(CopyToHidden, ReplacesAReadOnlyFile) {
  two_hidden_partitions().file(first_share_file, "old", 0400).file(temporary_share_file, "new");
  cp_xml_to_hidden();
  EXPECT_EQ(read_file(first_share_file), "new");
}

TEST(CopyToHidden, WithoutATemporaryFileLeavesTheVolumesFiles) {
  two_hidden_partitions().shares("/mnt/HD_a4", "old a").shares("/mnt/HD_b4", "old b");
  expect_silence(cp_xml_to_hidden);
  EXPECT_EQ(read_file(first_share_file), "old a");
  EXPECT_EQ(read_file(second_share_file), "old b");
}

TEST(CopyToHidden, OfSomethingThatIsNoFileLeavesTheVolumesFiles) {
  two_hidden_partitions().shares("/mnt/HD_a4", "old a").folder(temporary_share_file);
  expect_silence(cp_xml_to_hidden);
  EXPECT_EQ(read_file(first_share_file), "old a");
  EXPECT_EQ(names_in("/mnt/HD_b4/.systemfile"), Names{});
}

TEST(CopyToHidden, ToAFullVolumeLeavesItsOldFileAndGoesOn) {
  Appliance machine = two_hidden_partitions();
  add_full_partition(machine, "/mnt/HD_a0", "old");
  machine.file(temporary_share_file, std::string(40000, 'n'));
  EXPECT_EQ(output_of(cp_xml_to_hidden), "CP: file copy error\n");
  EXPECT_EQ(read_file("/mnt/HD_a0/.systemfile/.smb.xml"), "old");
  EXPECT_EQ(names_in("/mnt/HD_a0/.systemfile"), (Names{".smb.xml"}));
  EXPECT_EQ(read_file(first_share_file), std::string(40000, 'n'));
  EXPECT_EQ(read_file(second_share_file), std::string(40000, 'n'));
}

TEST(CopyToHidden, WithoutTheSystemFolderGoesOnWithTheOthers) {
  Appliance{}
      .mount("/dev/sda4", "/mnt/HD_a4")
      .hidden("/dev/sdb4", "/mnt/HD_b4")
      .file("/mnt/HD_a9", "no folder at all")
      .file(temporary_share_file, "new");
  EXPECT_EQ(output_of(cp_xml_to_hidden), "CP: dest file exist and can't remove\nCP: can't stat dest\n");
  EXPECT_EQ(names_in("/mnt/HD_a4"), Names{});
  EXPECT_EQ(read_file("/mnt/HD_a9"), "no folder at all");
  EXPECT_EQ(read_file(second_share_file), "new");
}

TEST(CopyToHidden, WithoutHiddenFoldersDoesNothing) {
  Appliance{}.folder("/mnt/HD").file(temporary_share_file, "new");
  expect_silence(cp_xml_to_hidden);
  EXPECT_EQ(names_in("/mnt"), (Names{"HD"}));
  EXPECT_EQ(read_file(temporary_share_file), "new");
}

TEST(CopyToHidden, ReachesAFolderWithTheLongestName) {
  const std::string folder = "/mnt/HD_" + std::string(252, 'x');
  Appliance{}.folder(folder + "/.systemfile").file(temporary_share_file, "new");
  cp_xml_to_hidden();
  EXPECT_EQ(read_file(folder + "/.systemfile/.smb.xml"), "new");
}

TEST(CopyToHidden, PrintsNothingWhenAllIsWell) {
  two_hidden_partitions().file(temporary_share_file, "new");
  expect_silence(cp_xml_to_hidden);
}

TEST(RemovalFromHidden, DeletesTheShareXmlOfTheModeInForce) {
  const struct {
    int ads_enable;
    const char *kept;
  } rows[] = {{0, ".smb_ads.xml"}, {1, ".smb.xml"}, {2, ".smb_ads.xml"}};
  Appliance machine = two_hidden_partitions();
  for (const auto &row : rows) {
    SCOPED_TRACE(row.ads_enable);
    machine.shares("local").ads_shares("domain");
    pss->ads_enable = row.ads_enable;
    remove_hidden_smbxml();
    EXPECT_EQ(names_in("/mnt/HD_a4/.systemfile"), (Names{row.kept}));
    EXPECT_EQ(names_in("/mnt/HD_b4/.systemfile"), (Names{row.kept}));
  }
}

TEST(RemovalFromHidden, LeavesEverythingElse) {
  two_hidden_partitions()
      .shares("/mnt/HD_a4", "old")
      .file("/mnt/HD_a4/.systemfile/.iso_mount.xml", "kept")
      .file("/mnt/HD/.systemfile/.smb.xml", "kept")
      .file(temporary_share_file, "kept");
  remove_hidden_smbxml();
  EXPECT_EQ(names_in("/mnt/HD_a4/.systemfile"), (Names{".iso_mount.xml"}));
  EXPECT_EQ(read_file("/mnt/HD/.systemfile/.smb.xml"), "kept");
  EXPECT_EQ(read_file(temporary_share_file), "kept");
}

TEST(RemovalFromHidden, GoesOnWhereAFileIsMissing) {
  two_hidden_partitions().folder("/mnt/HD_a0").shares("/mnt/HD_b4", "old");
  expect_silence(remove_hidden_smbxml);
  EXPECT_FALSE(exists(second_share_file));
}

TEST(RemovalFromHidden, WithoutHiddenFoldersDoesNothing) {
  Appliance{};
  expect_silence(remove_hidden_smbxml);
}

} // namespace
} // namespace nasshare::tests
