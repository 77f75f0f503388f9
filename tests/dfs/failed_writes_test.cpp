// Files that cannot be written: the answer is 0 and they stay as they were.
#include "appliance.h"
#include "dfs_operations.h"
#include "nasshare/dfs.h"
#include "output.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

void store_on_a_read_only_volume() {
  Appliance{}.folder("/etc/NAS_CFG");
  ASSERT_EQ(run_program({"mount", "-t", "tmpfs", "tmpfs", "/etc/NAS_CFG"}).status, 0);
  store_one_of_each();
  ASSERT_EQ(run_program({"mount", "-o", "remount,ro", "/etc/NAS_CFG"}).status, 0);
}

TEST(FailedWrites, AreAnsweredWithZeroAndLeaveTheFiles) {
  store_on_a_read_only_volume();
  Captured captured;
  for (const DfsOperation &operation : operations) {
    SCOPED_TRACE(operation.name);
    const bool only_looks = std::string_view(operation.name).starts_with("chk_");
    EXPECT_EQ(operation.run(operation.good), only_looks ? 1U : 0U);
    EXPECT_EQ(dfs_list_empty(), 1);
  }
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(captured.err(), "");
  expect_files_unchanged();
}

TEST(FailedWrites, WithoutTheirFolderNothingIsAdded) {
  Appliance{}.remove("/etc/NAS_CFG");
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "media"), 0U);
  EXPECT_EQ(mod_dfs_node_by_group("media", "video"), 0U);
  EXPECT_EQ(add_dfs_group_node("media"), 0U);
  EXPECT_FALSE(exists("/etc/NAS_CFG"));
}

TEST(FailedWrites, OfTheWritersLeaveTheFilesToo) {
  store_on_a_read_only_volume();
  write_DFS_xml();
  write_DFS_group_xml();
  expect_files_unchanged();
}

// The group file comes first: what fails behind it leaves links of a group that is gone.
TEST(FailedWrites, OfTheLinksAloneLeaveTheGroupRenamed) {
  Appliance{}.file(group_path, group_file({"media"})).file(std::string(link_path) + "/in/the/way", "");
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(read_file(group_path), group_file({"video"}));
  EXPECT_EQ(del_dfs_group_node("video"), 0U);
  EXPECT_EQ(read_file(group_path), group_file({}));
  EXPECT_TRUE(exists(std::string(link_path) + "/in/the/way"));
}

TEST(FailedWrites, OfTheGroupsLeaveTheLinks) {
  store_one_of_each();
  Appliance{}.remove(group_path).file(std::string(group_path) + "/in/the/way", "");
  EXPECT_EQ(add_dfs_group_node("media"), 0U);
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
}

} // namespace
} // namespace nasshare::tests
