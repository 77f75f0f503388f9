// The operations on groups, and what these do to the links.
#include "appliance.h"
#include "debug_output.h"
#include "links.h"
#include "nasshare/acl.h"
#include "unopenable.h"
#include "untouched.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

void stored(const Names &groups, const Links &links) {
  Appliance{}.file(group_path, group_file(groups)).file(link_path, link_file(links));
}

void expect_files_untouched(const std::function<void()> &operation) {
  expect_untouched({group_path, link_path}, operation);
}

TEST(Groups, AGroupIsAddedOnce) {
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(add_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
}

TEST(Groups, AddedGroupsFollowInOrder) {
  EXPECT_EQ(add_dfs_group_node("office"), 1U);
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(add_dfs_group_node("Media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office", "media", "Media"}));
  EXPECT_FALSE(exists(link_path));
}

TEST(Groups, TheCheckIsForExactlyTheName) {
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("media"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("Media"), 0U);
  EXPECT_EQ(chk_dfs_group_exist("medi"), 0U);
  EXPECT_EQ(chk_dfs_group_exist("media "), 0U);
}

TEST(Groups, TheCheckNeverWrites) {
  EXPECT_EQ(chk_dfs_group_exist("media"), 0U);
  EXPECT_FALSE(exists(group_path));
  stored({"media"}, {});
  expect_files_untouched([] {
    EXPECT_EQ(chk_dfs_group_exist("media"), 1U);
    EXPECT_EQ(chk_dfs_group_exist("office"), 0U);
  });
}

TEST(Groups, AnExistingGroupIsRefusedWithoutAWrite) {
  stored({"media"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(add_dfs_group_node("media"), 0U); });
}

TEST(Groups, ANameWithAnAmpersandIsStoredEscaped) {
  EXPECT_EQ(add_dfs_group_node("R&B"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"R&amp;B"}));
  EXPECT_EQ(chk_dfs_group_exist("R&B"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("R&amp;B"), 0U);
  EXPECT_EQ(add_dfs_group_node("R&B"), 0U);
}

TEST(Groups, RenamingAGroupMovesItsLinks) {
  stored({"office", "media"}, {tunes, papers, films});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office", "video"}));
  EXPECT_EQ(read_file(link_path),
            link_file({{"srv1", "music", "tunes", "video"}, papers, {"srv2", "movies", "films", "video"}}));
}

TEST(Groups, RenamingWithAnAmpersandMovesTheLinksToTheSameName) {
  stored({"media"}, {tunes});
  EXPECT_EQ(mod_dfs_group_node("media", "R&B"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("R&B"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("R&B", "tunes"), 1U);
  EXPECT_EQ(mod_dfs_group_node("R&B", "media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
}

TEST(Groups, RenamingAnAbsentGroupLeavesBothFiles) {
  stored({"office"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U); });
}

// A socket can be opened by nobody, which is no statement about what it holds.
TEST(Groups, WhileTheLinksCannotBeLoadedAGroupStaysAsItIs) {
  Appliance{}.file(group_path, group_file({"media"}));
  make_unopenable(link_path);
  const std::string before = read_file(group_path);
  EXPECT_EQ(mod_dfs_group_node("media", "films"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), before);
}

TEST(Groups, RenamingOntoAnotherGroupLeavesTwoOfTheName) {
  stored({"media", "video"}, {tunes, {"srv2", "movies", "films", "video"}});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"video", "video"}));
  EXPECT_EQ(read_file(link_path),
            link_file({{"srv1", "music", "tunes", "video"}, {"srv2", "movies", "films", "video"}}));
}

TEST(Groups, OfTwoEqualGroupsTheFirstIsRenamed) {
  stored({"media", "office", "media"}, {});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"video", "office", "media"}));
}

TEST(Groups, RenamingAGroupWithoutLinksWritesTheLinkFileToo) {
  Appliance{}.file(group_path, group_file({"media"}));
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({}));
}

TEST(Groups, DeletingAGroupDeletesItsLinks) {
  stored({"media", "office"}, {tunes, papers, films});
  EXPECT_EQ(del_dfs_group_node("media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Groups, DeletingAGroupWithoutLinksRewritesTheLinkFile) {
  Appliance{}
      .file(group_path, group_file({"media"}))
      .file(link_path, "<config><dfs><item><host>srv3</host><share>docs</share><local>papers</local>"
                       "<group>office</group></item></dfs></config>");
  EXPECT_EQ(del_dfs_group_node("media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({}));
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Groups, DeletingAnAbsentGroupLeavesBothFiles) {
  stored({"office"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(del_dfs_group_node("media"), 0U); });
}

TEST(Groups, WithoutAFileThereAreNone) {
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_FALSE(exists(group_path));
  EXPECT_FALSE(exists(link_path));
}

TEST(Groups, ABadFileCountsAsEmptyAndIsReplacedByTheNextWrite) {
  Appliance{}.file(group_path, "<config><dfs><item><group>media</group>");
  EXPECT_EQ(chk_dfs_group_exist("media"), 0U);
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), "<config><dfs><item><group>media</group>");
  EXPECT_EQ(add_dfs_group_node("office"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
}

TEST(Groups, EveryOperationEmptiesTheNameList) {
  stored({"media"}, {tunes});
  const struct {
    std::function<std::uint32_t()> operation;
    std::uint32_t answer;
  } rows[] = {
      {[] { return add_dfs_group_node("office"); }, 1},
      {[] { return add_dfs_group_node("office"); }, 0},
      {[] { return chk_dfs_group_exist("office"); }, 1},
      {[] { return chk_dfs_group_exist("nonesuch"); }, 0},
      {[] { return mod_dfs_group_node("media", "video"); }, 1},
      {[] { return mod_dfs_group_node("nonesuch", "video"); }, 0},
      {[] { return del_dfs_group_node("video"); }, 1},
      {[] { return del_dfs_group_node("nonesuch"); }, 0},
  };
  int number = 0;
  for (const auto &row : rows) {
    SCOPED_TRACE(number++);
    Insert_Name_Node("before");
    EXPECT_EQ(row.operation(), row.answer);
    EXPECT_EQ(Is_Name_Empty(), 1);
    EXPECT_EQ(dfs_list_empty(), 1);
  }
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
}

TEST(Groups, ARenameIsTracedForDebugFlagOneOnly) {
  const auto rename = [] {
    stored({"media"}, {tunes});
    mod_dfs_group_node("media", "video");
  };
  expect_listing_and_trace(rename, link_listing({tunes}), "--- [media][video]\n" + link_listing({tunes}));
}

TEST(Groups, ARenameOfAnAbsentGroupIsTracedToo) {
  stored({"office"}, {tunes});
  expect_trace([] { mod_dfs_group_node("me%sdia", "video"); }, "--- [me%sdia][video]\n");
}

TEST(Groups, ARenameWithoutBothNamesIsNotTraced) {
  expect_silence([] {
    mod_dfs_group_node("media", "");
    mod_dfs_group_node("", "video");
    mod_dfs_group_node(nullptr, "video");
    mod_dfs_group_node("media", nullptr);
  });
}

TEST(Groups, ADeletedGroupsLinksAreListedForAnyDebugFlagButZero) {
  const auto remove = [] {
    stored({"media"}, {tunes});
    del_dfs_group_node("media");
  };
  expect_listing(remove, link_listing({tunes}));
}

TEST(Groups, TheOthersPrintNothing) {
  expect_silence([] {
    add_dfs_group_node("media");
    add_dfs_group_node("media");
    chk_dfs_group_exist("media");
    del_dfs_group_node("nonesuch");
    get_dfs_group_info();
    write_DFS_group_xml();
  });
}

} // namespace
} // namespace nasshare::tests
