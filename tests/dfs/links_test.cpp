// The operations on links: each loads the file, acts, replaces the file and leaves the list empty.
#include "appliance.h"
#include "debug_output.h"
#include "links.h"
#include "untouched.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

void stored(const Links &links) {
  Appliance{}.file(link_path, link_file(links));
}

void expect_file_untouched(const std::function<void()> &operation) {
  expect_untouched({link_path}, operation);
}

TEST(Links, TheFirstAddedLinkMakesTheFile) {
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({{"srv1", "music", "tunes", "media"}}));
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, AddedLinksFollowInOrder) {
  stored({tunes});
  EXPECT_EQ(add_dfs_node("srv3", "docs", "papers", "office"), 1U);
  EXPECT_EQ(add_dfs_node("srv2", "movies", "films", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({tunes, papers, films}));
}

TEST(Links, ALinkThatExistsIsNotAddedAgain) {
  stored({tunes});
  expect_file_untouched([] { EXPECT_EQ(add_dfs_node("srv9", "other", "tunes", "media"), 0U); });
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, TheSameLocalInTwoGroupsIsTwoLinks) {
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "media"), 1U);
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "office"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({tunes, {"srv1", "music", "tunes", "office"}}));
}

TEST(Links, NamesThatDifferInCaseAreTwoLinks) {
  stored({tunes});
  EXPECT_EQ(add_dfs_node("srv1", "music", "Tunes", "media"), 1U);
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "Media"), 1U);
  EXPECT_EQ(stored_links().size(), 3U);
}

TEST(Links, TheCheckTakesTheGroupFirst) {
  stored({tunes});
  EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("tunes", "media"), 0U);
  EXPECT_EQ(chk_dfs_node_exist("Media", "tunes"), 0U);
  EXPECT_EQ(chk_dfs_node_exist("media", "tune"), 0U);
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, TheCheckNeverWrites) {
  EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 0U);
  EXPECT_FALSE(exists(link_path));
  stored({tunes});
  expect_file_untouched([] {
    EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 1U);
    EXPECT_EQ(chk_dfs_node_exist("media", "films"), 0U);
  });
}

TEST(Links, TheCheckReportsANameThatOnlyFitsAnotherOnesStartAsAbsent) {
  const std::string fits(511, 'x');
  stored({{"srv1", "music", fits, fits}});
  EXPECT_EQ(chk_dfs_node_exist(fits.c_str(), fits.c_str()), 1U);
  EXPECT_EQ(chk_dfs_node_exist(fits.c_str(), (fits + "x").c_str()), 0U);
  EXPECT_EQ(chk_dfs_node_exist((fits + "x").c_str(), fits.c_str()), 0U);
}

TEST(Links, DeletingTakesTheLocalFirst) {
  stored({tunes});
  expect_file_untouched([] { EXPECT_EQ(del_dfs_node("media", "tunes"), 0U); });
  EXPECT_EQ(del_dfs_node("tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({}));
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, DeletingLeavesTheOthers) {
  stored({tunes, films, papers});
  EXPECT_EQ(del_dfs_node("films", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({tunes, papers}));
}

TEST(Links, OfTwoEqualLinksTheFirstIsDeleted) {
  const Link twin{"srv9", "other", "tunes", "media"};
  stored({papers, tunes, twin});
  EXPECT_EQ(del_dfs_node("tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({papers, twin}));
}

TEST(Links, AChangeReplacesAllFourValuesInPlace) {
  stored({tunes, films});
  EXPECT_EQ(mod_dfs_node("srv7", "songs", "hits", "radio", "tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({{"srv7", "songs", "hits", "radio"}, films}));
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, AChangeTakesTheOldLocalBeforeTheOldGroup) {
  stored({tunes});
  expect_file_untouched(
      [] { EXPECT_EQ(mod_dfs_node("srv7", "songs", "hits", "radio", "media", "tunes"), 0U); });
}

TEST(Links, AChangeOntoAnotherLinkLeavesTwoOfThatIdentity) {
  stored({tunes, films});
  EXPECT_EQ(mod_dfs_node("srv2", "movies", "tunes", "media", "films", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({tunes, {"srv2", "movies", "tunes", "media"}}));
}

TEST(Links, AChangeOfHostAndShareAloneKeepsTheIdentity) {
  stored({tunes});
  EXPECT_EQ(mod_dfs_node("srv8", "music2", "tunes", "media", "tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({{"srv8", "music2", "tunes", "media"}}));
}

TEST(Links, WhatIsNotThereIsNeitherChangedNorDeleted) {
  stored({tunes});
  expect_file_untouched([] {
    EXPECT_EQ(mod_dfs_node("srv1", "music", "tunes", "media", "films", "media"), 0U);
    EXPECT_EQ(del_dfs_node("films", "media"), 0U);
    EXPECT_EQ(del_dfs_node("tunes", "office"), 0U);
  });
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, WithoutAFileNothingIsFoundAndNoneIsMade) {
  EXPECT_EQ(mod_dfs_node("srv1", "music", "tunes", "media", "tunes", "media"), 0U);
  EXPECT_EQ(del_dfs_node("tunes", "media"), 0U);
  EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 0U);
  EXPECT_FALSE(exists(link_path));
}

TEST(Links, AllLinksOfAGroupMove) {
  stored({tunes, papers, films});
  EXPECT_EQ(mod_dfs_node_by_group("media", "video"), 1U);
  EXPECT_EQ(read_file(link_path),
            link_file({{"srv1", "music", "tunes", "video"}, papers, {"srv2", "movies", "films", "video"}}));
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, AllLinksOfAGroupAreDeleted) {
  stored({tunes, papers, films});
  EXPECT_EQ(del_dfs_node_by_group("media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({papers}));
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(Links, MovingAGroupWithoutLinksRewritesTheFileAllTheSame) {
  Appliance{}.file(link_path, "<config><dfs><item><host>srv3</host><share>docs</share>"
                              "<local>papers</local><group>office</group></item></dfs></config>");
  EXPECT_EQ(mod_dfs_node_by_group("media", "video"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Links, DeletingAGroupWithoutLinksRewritesTheFileAllTheSame) {
  Appliance{}.file(link_path, "<config><dfs><item><host>srv3</host><share>docs</share>"
                              "<local>papers</local><group>office</group></item></dfs></config>");
  EXPECT_EQ(del_dfs_node_by_group("media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Links, MovingAGroupWithoutAFileMakesAnEmptyOne) {
  EXPECT_EQ(mod_dfs_node_by_group("media", "video"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({}));
}

TEST(Links, DeletingAGroupWithoutAFileMakesAnEmptyOne) {
  EXPECT_EQ(del_dfs_node_by_group("media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({}));
}

TEST(Links, ABadFileCountsAsEmptyAndIsReplacedByTheNextWrite) {
  Appliance{}.file(link_path, "<config><dfs><item>");
  expect_file_untouched([] {
    EXPECT_EQ(chk_dfs_node_exist("media", "tunes"), 0U);
    EXPECT_EQ(del_dfs_node("tunes", "media"), 0U);
    EXPECT_EQ(mod_dfs_node("srv1", "music", "tunes", "media", "tunes", "media"), 0U);
  });
  EXPECT_EQ(add_dfs_node("srv1", "music", "tunes", "media"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
}

TEST(Links, WhatTheListHeldBeforeIsLostWithEveryOperation) {
  stored({tunes});
  const std::vector<std::function<std::uint32_t()>> operations{
      [] { return chk_dfs_node_exist("media", "tunes"); },
      [] { return add_dfs_node("srv2", "movies", "films", "media"); },
      [] { return mod_dfs_node("srv2", "movies", "films", "media", "films", "media"); },
      [] { return mod_dfs_node_by_group("media", "media"); },
      [] { return del_dfs_node_by_group("other"); },
      [] { return del_dfs_node("films", "media"); },
  };
  for (const auto &operation : operations) {
    list_link(papers);
    EXPECT_EQ(operation(), 1U);
    EXPECT_EQ(dfs_list_empty(), 1);
    EXPECT_EQ(read_file(link_path).find("papers"), std::string::npos);
  }
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
}

TEST(Links, EveryOperationListsTheLoadedLinksForAnyDebugFlagButZero) {
  const std::vector<std::function<void()>> operations{
      [] { add_dfs_node("srv9", "other", "tunes", "media"); },
      [] { add_dfs_node("srv2", "movies", "films", "media"); },
      [] { mod_dfs_node("srv7", "songs", "hits", "radio", "tunes", "media"); },
      [] { mod_dfs_node("srv7", "songs", "hits", "radio", "nonesuch", "media"); },
      [] { chk_dfs_node_exist("media", "tunes"); },
      [] { mod_dfs_node_by_group("media", "video"); },
      [] { del_dfs_node_by_group("media"); },
      [] { del_dfs_node("tunes", "media"); },
      [] { del_dfs_node("nonesuch", "media"); },
  };
  int number = 0;
  for (const auto &operation : operations) {
    SCOPED_TRACE("operation " + std::to_string(number++));
    const auto operate = [&operation] {
      stored({tunes});
      operation();
    };
    expect_listing(operate, link_listing({tunes}));
  }
}

TEST(Links, AnAddWithoutAFilePrintsHeadAndEndOfTheListing) {
  const auto add = [] {
    Appliance{}.remove(link_path);
    add_dfs_node("srv1", "music", "tunes", "media");
  };
  expect_listing(add, link_listing({}));
}

} // namespace
} // namespace nasshare::tests
