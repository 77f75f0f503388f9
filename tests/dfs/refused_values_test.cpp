// Values that neither file can hold: the answer is 0 and nothing changes.
#include "appliance.h"
#include "debug_output.h"
#include "dfs_operations.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace nasshare::tests {
namespace {

// The value is refused in all four places of a new link, of a changed one, and as the name of a group.
void expect_refused_everywhere(const std::string &value) {
  const char *bad = value.c_str();
  store_one_of_each();
  EXPECT_EQ(add_dfs_node(bad, "movies", "films", "media"), 0U);
  EXPECT_EQ(add_dfs_node("srv2", bad, "films", "media"), 0U);
  EXPECT_EQ(add_dfs_node("srv2", "movies", bad, "media"), 0U);
  EXPECT_EQ(add_dfs_node("srv2", "movies", "films", bad), 0U);
  EXPECT_EQ(mod_dfs_node(bad, "movies", "films", "media", "tunes", "media"), 0U);
  EXPECT_EQ(mod_dfs_node("srv2", bad, "films", "media", "tunes", "media"), 0U);
  EXPECT_EQ(mod_dfs_node("srv2", "movies", bad, "media", "tunes", "media"), 0U);
  EXPECT_EQ(mod_dfs_node("srv2", "movies", "films", bad, "tunes", "media"), 0U);
  EXPECT_EQ(mod_dfs_node_by_group("media", bad), 0U);
  EXPECT_EQ(add_dfs_group_node(bad), 0U);
  EXPECT_EQ(mod_dfs_group_node("media", bad), 0U);
  expect_files_unchanged();
  EXPECT_EQ(dfs_list_empty(), 1);
}

TEST(RefusedValues, AMissingOrEmptyArgumentIsRefusedAtEveryPlace) {
  store_one_of_each();
  for (const DfsOperation &operation : operations) {
    for (std::size_t place = 0; place < operation.values; ++place) {
      SCOPED_TRACE(operation.name + std::string(", argument ") + std::to_string(place));
      auto values = operation.good;
      values[place] = nullptr;
      EXPECT_EQ(operation.run(values), 0U);
      values[place] = "";
      EXPECT_EQ(operation.run(values), 0U);
    }
  }
  expect_files_unchanged();
}

TEST(RefusedValues, AMissingOrEmptyArgumentReadsNothingAndLeavesTheList) {
  store_one_of_each();
  list_link(tunes);
  for (const DfsOperation &operation : operations) {
    SCOPED_TRACE(operation.name);
    auto values = operation.good;
    values[operation.values - 1] = "";
    expect_silence([&] { operation.run(values); });
    EXPECT_EQ(listed_links(), Links{tunes});
  }
}

TEST(RefusedValues, EachOperationTakesItsGoodValues) {
  for (const DfsOperation &operation : operations) {
    SCOPED_TRACE(operation.name);
    store_one_of_each();
    EXPECT_EQ(operation.run(operation.good), 1U);
  }
}

TEST(RefusedValues, AValueOf511BytesIsStored) {
  const std::string h(511, 'h');
  const std::string s(511, 's');
  const std::string l(511, 'l');
  const std::string g(511, 'g');
  EXPECT_EQ(add_dfs_node(h.c_str(), s.c_str(), l.c_str(), g.c_str()), 1U);
  EXPECT_EQ(add_dfs_group_node(g.c_str()), 1U);
  EXPECT_EQ(read_file(link_path), link_file({{h, s, l, g}}));
  EXPECT_EQ(read_file(group_path), group_file({g}));
  EXPECT_EQ(chk_dfs_node_exist(g.c_str(), l.c_str()), 1U);
  EXPECT_EQ(chk_dfs_group_exist(g.c_str()), 1U);
  EXPECT_EQ(del_dfs_node(l.c_str(), g.c_str()), 1U);
  EXPECT_EQ(del_dfs_group_node(g.c_str()), 1U);
}

TEST(RefusedValues, AValueOf512BytesIsRefused) {
  expect_refused_everywhere(std::string(512, 'x'));
}

TEST(RefusedValues, AVeryLongValueIsRefused) {
  expect_refused_everywhere(std::string(100000, 'x'));
}

TEST(RefusedValues, AnAmpersandCountsAsItsFiveBytesExceptInAHost) {
  const std::string fits = std::string(506, 'x') + "&";
  const std::string longer = std::string(507, 'x') + "&";
  for (const auto &[value, answer] : {std::pair(fits, 1U), std::pair(longer, 0U)}) {
    SCOPED_TRACE(value.size());
    const char *v = value.c_str();
    store_one_of_each();
    EXPECT_EQ(add_dfs_node("srv1", v, "l1", "g1"), answer);
    EXPECT_EQ(add_dfs_node("srv1", "music", v, "g2"), answer);
    EXPECT_EQ(add_dfs_node("srv1", "music", "l3", v), answer);
    EXPECT_EQ(add_dfs_group_node(v), answer);
    EXPECT_EQ(mod_dfs_node_by_group("media", v), answer);
    EXPECT_EQ(mod_dfs_group_node("media", v), answer);
    EXPECT_EQ(add_dfs_node(v, "music", "l4", "g4"), 1U);
  }
}

TEST(RefusedValues, AHostCountsItsOwnBytes) {
  const std::string fits(511, '&');
  const std::string longer(512, '&');
  EXPECT_EQ(add_dfs_node(fits.c_str(), "music", "tunes", "media"), 1U);
  EXPECT_EQ(add_dfs_node(longer.c_str(), "music", "films", "media"), 0U);
  EXPECT_EQ(stored_links(), (Links{{fits, "music", "tunes", "media"}}));
}

TEST(RefusedValues, BytesThatAreNoTextAreRefused) {
  for (const char *value :
       {"a\xff", "\x80", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "caf\xe9", "\xc3"}) {
    expect_refused_everywhere(value);
  }
}

TEST(RefusedValues, CharactersThatXmlDoesNotKnowAreRefused) {
  for (const char *value : {"\x01", "a\x1f", "\x08", "\x0b", "\uFFFE", "\uFFFF"}) {
    expect_refused_everywhere(value);
  }
}

TEST(RefusedValues, NothingIsPrintedAboutThem) {
  const std::string too_long(512, 'x');
  const auto refuse = [&too_long] {
    expect_refused_everywhere("\x01");
    expect_refused_everywhere(too_long);
  };
  expect_trace(refuse, "--- [media][\x01]\n--- [media][" + too_long + "]\n"); // of the renaming alone
}

} // namespace
} // namespace nasshare::tests
