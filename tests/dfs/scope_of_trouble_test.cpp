// Which trouble keeps a DFS file from being written: that of the file itself, and no other.
#include "appliance.h"
#include "dfs_files.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "nasshare/support.h"
#include "unopenable.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

const Link songs{"nas1", "music", "songs", "media"};
const Link films{"nas1", "video", "films", "media"};

void begin() {
  Appliance::single_disks().file(link_path, link_file({songs})).file(group_path, group_file({"media"}));
}

template <class Operation> void short_of_descriptors(Operation operation) {
  const DescriptorLimit none(0);
  operation();
}

TEST(TroubleOfADfsFile, KeepsItFromBeingWrittenShort) {
  begin();
  short_of_descriptors(get_dfs_info);
  list_link(films);
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), link_file({songs}));

  short_of_descriptors(get_dfs_group_info);
  Insert_Name_Node("docs");
  write_DFS_group_xml();
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
}

TEST(TroubleOfADfsFile, OutlastsASoundLoadOfTheCatalogue) {
  begin();
  short_of_descriptors(get_dfs_info);
  get_samba_info();
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), link_file({songs}));
}

TEST(TroubleOfADfsFile, EndsWhenItIsReadAgain) {
  begin();
  short_of_descriptors(get_dfs_info);
  get_dfs_info();
  list_link(films);
  write_DFS_xml();
  EXPECT_EQ(stored_links(), (Links{songs, films}));
}

TEST(TroubleOfADfsFile, DoesNotConcernTheOtherOne) {
  begin();
  short_of_descriptors(get_dfs_info);
  get_dfs_group_info();
  Insert_Name_Node("docs");
  write_DFS_group_xml();
  EXPECT_EQ(read_file(group_path), group_file({"media", "docs"}));
}

// ---- Trouble of others

TEST(TroubleElsewhere, AnSmbclientThatASignalEndsKeepsNoDfsFileFromBeingWritten) {
  begin();
  Appliance{}.program("/usr/bin/smbclient", "kill -KILL $$");
  get_dfs_info();
  list_link(films);
  get_host_share_name("attic");
  write_DFS_xml();
  EXPECT_EQ(stored_links(), (Links{songs, films}));
}

TEST(TroubleElsewhere, AShortageInAQuestionAboutNfsKeepsNoDfsFileFromBeingWritten) {
  begin();
  get_dfs_info();
  list_link(films);
  short_of_descriptors([] { check_nfs_share("/mnt/HD/HD_a2/music"); });
  write_DFS_xml();
  EXPECT_EQ(stored_links(), (Links{songs, films}));
}

TEST(TroubleElsewhere, ACatalogueThatCannotBeLoadedKeepsNoDfsFileFromBeingWritten) {
  begin();
  get_dfs_info();
  list_link(films);
  short_of_descriptors(read_global_setting);
  write_DFS_xml();
  EXPECT_EQ(stored_links(), (Links{songs, films}));
}

} // namespace
} // namespace nasshare::tests
