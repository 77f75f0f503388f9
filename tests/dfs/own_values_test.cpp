// A host program picks a link or a group from the loaded list and hands its own text back: the operations
// empty that list first.
#include "appliance.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

void store_two_links() {
  Appliance{};
  ASSERT_EQ(add_dfs_node("srv1", "music", "tunes", "media"), 1U);
  ASSERT_EQ(add_dfs_node("srv2", "films", "films", "media"), 1U);
  get_dfs_info();
}

void store_a_group() {
  Appliance{};
  ASSERT_EQ(add_dfs_group_node("media"), 1U);
  get_dfs_group_info();
}

TEST(ALoadedLinksOwnValues, FindIt) {
  store_two_links();
  EXPECT_EQ(chk_dfs_node_exist(pdfs->head->group, pdfs->head->local), 1U);
}

TEST(ALoadedLinksOwnValues, DeleteIt) {
  store_two_links();
  EXPECT_EQ(del_dfs_node(pdfs->head->local, pdfs->head->group), 1U);
  EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 0U);
  EXPECT_EQ(chk_dfs_node_exist("media", "films"), 1U);
}

TEST(ALoadedLinksOwnValues, ChangeIt) {
  store_two_links();
  const auto *link = pdfs->head;
  EXPECT_EQ(mod_dfs_node("srv9", link->share, link->local, "other", link->local, link->group), 1U);
  EXPECT_EQ(chk_dfs_node_exist("other", "tunes"), 1U);
}

TEST(ALoadedLinksOwnValues, AddAnotherLikeIt) {
  store_two_links();
  EXPECT_EQ(add_dfs_node(pdfs->head->host, pdfs->head->share, pdfs->head->local, "other"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("other", "tunes"), 1U);
}

TEST(ALoadedLinksOwnValues, MoveItsGroup) {
  store_two_links();
  EXPECT_EQ(mod_dfs_node_by_group(pdfs->head->group, "archive"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("archive", "tunes"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("archive", "films"), 1U);
}

TEST(ALoadedLinksOwnValues, DeleteItsGroup) {
  store_two_links();
  EXPECT_EQ(del_dfs_node_by_group(pdfs->head->group), 1U);
  EXPECT_EQ(chk_dfs_node_exist("media", "films"), 0U);
}

TEST(ALoadedLinksOwnValues, MoveItsGroupInTheList) {
  store_two_links();
  dfs_modify_node_by_group(pdfs->head->group, "archive");
  EXPECT_STREQ(pdfs->head->group, "archive");
  EXPECT_STREQ(pdfs->head->next->group, "archive");
  dfs_remove_all();
}

TEST(ALoadedLinksOwnValues, DeleteItsGroupInTheList) {
  store_two_links();
  dfs_delete_node_by_group(pdfs->head->group);
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(ALoadedGroupsOwnName, FindsIt) {
  store_a_group();
  EXPECT_EQ(chk_dfs_group_exist(pnl->head->name), 1U);
}

TEST(ALoadedGroupsOwnName, IsTaken) {
  store_a_group();
  EXPECT_EQ(add_dfs_group_node(pnl->head->name), 0U);
}

TEST(ALoadedGroupsOwnName, RenamesIt) {
  store_a_group();
  EXPECT_EQ(mod_dfs_group_node(pnl->head->name, "video"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("video"), 1U);
}

TEST(ALoadedGroupsOwnName, DeletesIt) {
  store_a_group();
  EXPECT_EQ(del_dfs_group_node(pnl->head->name), 1U);
  EXPECT_EQ(chk_dfs_group_exist("media"), 0U);
}

} // namespace
} // namespace nasshare::tests
