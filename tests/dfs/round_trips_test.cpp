// A value is what the caller gave, however often other operations load and store it.
#include "appliance.h"
#include "dfs_files.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

struct Row {
  std::string value;
  std::string stored; // how it stands in the file
};

const std::vector<Row> rows{
    {"plain", "plain"},
    {"R&B", "R&amp;B"},
    {"&", "&amp;"},
    {"&&;&", "&amp;&amp;;&amp;"},
    {"R&amp;B", "R&amp;amp;B"},
    {"&amp;amp;", "&amp;amp;amp;"},
    {"&#38;", "&amp;#38;"},
    {"&#x26;lt;", "&amp;#x26;lt;"},
    {"&nonesuch;", "&amp;nonesuch;"},
    {"&lt;", "&amp;lt;"},
    {"a<b>c", "a&lt;b&gt;c"},
    {"</item>", "&lt;/item&gt;"},
    {"]]>", "]]&gt;"},
    {"<!-- x -->", "&lt;!-- x --&gt;"},
    {"\"quoted\" 'name'", "\"quoted\" 'name'"},
    {"my media", "my media"},
    {" ", " "},
    {" in blanks ", " in blanks "},
    {"tab\tand\nline", "tab\tand\nline"},
    {"return\r", "return&#13;"},
    {"100%s%n", "100%s%n"},
    {"back\\slash/", "back\\slash/"},
    {"\u00fc\u97f3\U0001F600", "\u00fc\u97f3\U0001F600"},
    {"\x7f", "\x7f"},
};

// Ten times over, operations that have nothing to do with the value load both files and replace them.
void rewrite_ten_times() {
  for (int i = 0; i < 10; ++i) {
    const std::string name = "other" + std::to_string(i);
    ASSERT_EQ(add_dfs_node("srv9", "share", name.c_str(), "office"), 1U);
    ASSERT_EQ(mod_dfs_node("srv8", "thing", "changed", "office", name.c_str(), "office"), 1U);
    ASSERT_EQ(mod_dfs_node_by_group("office", "papers"), 1U);
    ASSERT_EQ(del_dfs_node("changed", "papers"), 1U);
    ASSERT_EQ(del_dfs_node_by_group("nonesuch"), 1U);
    ASSERT_EQ(add_dfs_group_node("office"), 1U);
    ASSERT_EQ(mod_dfs_group_node("office", "papers"), 1U);
    ASSERT_EQ(del_dfs_group_node("papers"), 1U);
  }
}

TEST(RoundTrips, AnAddedLinkStaysWhatItWas) {
  for (const auto &[value, stored] : rows) {
    SCOPED_TRACE(value);
    const char *v = value.c_str();
    Appliance{}.remove(link_path);
    ASSERT_EQ(add_dfs_node("srv1", v, v, v), 1U);
    EXPECT_EQ(read_file(link_path), link_file({{"srv1", stored, stored, stored}}));
    rewrite_ten_times();
    EXPECT_EQ(read_file(link_path), link_file({{"srv1", stored, stored, stored}}));
    EXPECT_EQ(stored_links(), (Links{{"srv1", value, value, value}}));
    EXPECT_EQ(chk_dfs_node_exist(v, v), 1U);
    EXPECT_EQ(add_dfs_node("srv1", "music", v, v), 0U);
    EXPECT_EQ(del_dfs_node(v, v), 1U);
  }
}

// A host is markup: what stands there as a reference is the character that it means.
TEST(RoundTrips, AHostIsStoredAsItIsHandedOver) {
  const std::vector<std::pair<std::string, std::string>> hosts{
      {"a&amp;b", "a&amp;b"}, {"a&amp;amp;b", "a&amp;amp;b"},
      {"&lt;", "&lt;"},       {"&#38;", "&amp;"},
      {"R&D", "R&amp;D"},     {"a<b", "a&lt;b"}};
  for (const auto &[host, stored] : hosts) {
    SCOPED_TRACE(host);
    Appliance{}.remove(link_path);
    ASSERT_EQ(add_dfs_node(host.c_str(), "music", "tunes", "media"), 1U);
    EXPECT_EQ(read_file(link_path), link_file({{stored, "music", "tunes", "media"}}));
    rewrite_ten_times();
    EXPECT_EQ(read_file(link_path), link_file({{stored, "music", "tunes", "media"}}));
    ASSERT_EQ(mod_dfs_node(host.c_str(), "music", "songs", "media", "tunes", "media"), 1U);
    EXPECT_EQ(read_file(link_path), link_file({{stored, "music", "songs", "media"}}));
  }
}

TEST(RoundTrips, AChangedLinkStaysWhatItWas) {
  for (const auto &[value, stored] : rows) {
    SCOPED_TRACE(value);
    const char *v = value.c_str();
    Appliance{}.file(link_path, link_file({{"srv1", "music", "tunes", "media"}}));
    ASSERT_EQ(mod_dfs_node("srv1", v, v, v, "tunes", "media"), 1U);
    rewrite_ten_times();
    EXPECT_EQ(read_file(link_path), link_file({{"srv1", stored, stored, stored}}));
    EXPECT_EQ(mod_dfs_node("srv1", "music", "tunes", "media", v, v), 1U);
    EXPECT_EQ(read_file(link_path), link_file({{"srv1", "music", "tunes", "media"}}));
  }
}

TEST(RoundTrips, AGroupStaysWhatItWas) {
  for (const auto &[value, stored] : rows) {
    SCOPED_TRACE(value);
    const char *v = value.c_str();
    Appliance{}.remove(group_path);
    ASSERT_EQ(add_dfs_group_node(v), 1U);
    EXPECT_EQ(read_file(group_path), group_file({stored}));
    rewrite_ten_times();
    EXPECT_EQ(read_file(group_path), group_file({stored}));
    EXPECT_EQ(chk_dfs_group_exist(v), 1U);
    EXPECT_EQ(add_dfs_group_node(v), 0U);
    EXPECT_EQ(del_dfs_group_node(v), 1U);
  }
}

TEST(RoundTrips, ARenamedGroupAndItsLinksStayWhatTheyWere) {
  for (const auto &[value, stored] : rows) {
    SCOPED_TRACE(value);
    const char *v = value.c_str();
    Appliance{}
        .file(group_path, group_file({"media"}))
        .file(link_path, link_file({{"srv1", "music", "tunes", "media"}}));
    ASSERT_EQ(mod_dfs_group_node("media", v), 1U);
    rewrite_ten_times();
    EXPECT_EQ(read_file(group_path), group_file({stored}));
    EXPECT_EQ(read_file(link_path), link_file({{"srv1", "music", "tunes", stored}}));
    EXPECT_EQ(del_dfs_group_node(v), 1U);
    EXPECT_EQ(read_file(group_path), group_file({}));
    EXPECT_EQ(read_file(link_path), link_file({}));
  }
}

TEST(RoundTrips, NamesThatDifferOnlyInTheirEscapingAreDifferentNames) {
  for (const char *name : {"&", "&amp;", "&#38;", "&amp;amp;"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(chk_dfs_node_exist(name, name), 0U);
    EXPECT_EQ(add_dfs_node("srv1", "music", name, name), 1U);
    EXPECT_EQ(chk_dfs_group_exist(name), 0U);
    EXPECT_EQ(add_dfs_group_node(name), 1U);
  }
  EXPECT_EQ(del_dfs_group_node("&amp;"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"&amp;", "&amp;#38;", "&amp;amp;amp;"}));
  EXPECT_EQ(read_file(link_path), link_file({{"srv1", "music", "&amp;", "&amp;"},
                                             {"srv1", "music", "&amp;#38;", "&amp;#38;"},
                                             {"srv1", "music", "&amp;amp;amp;", "&amp;amp;amp;"}}));
}

// What the exported writer stored out of escaped fields is the same value to the operations.
TEST(RoundTrips, EscapedFieldsOfAHostProgramAreStoredOnce) {
  list_link({"a&amp;b", "R&amp;B", "R&amp;B", "R&amp;B"});
  write_DFS_xml();
  Insert_Name_Node("R&amp;B");
  write_DFS_group_xml();
  rewrite_ten_times();
  EXPECT_EQ(stored_links(), (Links{{"a&b", "R&B", "R&B", "R&B"}}));
  EXPECT_EQ(chk_dfs_group_exist("R&B"), 1U);
}

} // namespace
} // namespace nasshare::tests
