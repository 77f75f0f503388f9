// Values that neither file can hold, and files that cannot be written: the answer is 0 and nothing changes.
#include "appliance.h"
#include "dfs_files.h"
#include "nasshare/support.h"
#include "output.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

const Link tunes{"srv1", "music", "tunes", "media"};

// An operation that takes values at each of its places; the others are given good ones.
struct Operation {
  const char *name;
  std::size_t values;
  std::function<std::uint32_t(const std::array<const char *, 6> &)> run;
  std::array<const char *, 6> good;
};

const std::vector<Operation> operations{
    {"add_dfs_node",
     4,
     [](const auto &v) { return add_dfs_node(v[0], v[1], v[2], v[3]); },
     {"srv2", "movies", "films", "media"}},
    {"mod_dfs_node",
     6,
     [](const auto &v) { return mod_dfs_node(v[0], v[1], v[2], v[3], v[4], v[5]); },
     {"srv2", "movies", "films", "media", "tunes", "media"}},
    {"del_dfs_node", 2, [](const auto &v) { return del_dfs_node(v[0], v[1]); }, {"tunes", "media"}},
    {"chk_dfs_node_exist",
     2,
     [](const auto &v) { return chk_dfs_node_exist(v[0], v[1]); },
     {"media", "tunes"}},
    {"mod_dfs_node_by_group",
     2,
     [](const auto &v) { return mod_dfs_node_by_group(v[0], v[1]); },
     {"media", "video"}},
    {"del_dfs_node_by_group", 1, [](const auto &v) { return del_dfs_node_by_group(v[0]); }, {"media"}},
    {"add_dfs_group_node", 1, [](const auto &v) { return add_dfs_group_node(v[0]); }, {"office"}},
    {"chk_dfs_group_exist", 1, [](const auto &v) { return chk_dfs_group_exist(v[0]); }, {"media"}},
    {"mod_dfs_group_node",
     2,
     [](const auto &v) { return mod_dfs_group_node(v[0], v[1]); },
     {"media", "video"}},
    {"del_dfs_group_node", 1, [](const auto &v) { return del_dfs_group_node(v[0]); }, {"media"}},
};

void store_one_of_each() {
  Appliance{}.file(link_path, link_file({tunes})).file(group_path, group_file({"media"}));
}

void expect_files_unchanged() {
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
  EXPECT_EQ(names_in("/etc/NAS_CFG"), (std::vector<std::string>{"smbdfs.xml", "smbdfs_group.xml"}));
}

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

void store_on_a_read_only_volume() {
  Appliance{}.folder("/etc/NAS_CFG");
  ASSERT_EQ(run_program({"mount", "-t", "tmpfs", "tmpfs", "/etc/NAS_CFG"}).status, 0);
  store_one_of_each();
  ASSERT_EQ(run_program({"mount", "-o", "remount,ro", "/etc/NAS_CFG"}).status, 0);
}

TEST(RefusedValues, AMissingOrEmptyArgumentIsRefusedAtEveryPlace) {
  store_one_of_each();
  for (const Operation &operation : operations) {
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
  smb_dbg_flag = 2;
  list_link(tunes);
  for (const Operation &operation : operations) {
    SCOPED_TRACE(operation.name);
    auto values = operation.good;
    values[operation.values - 1] = "";
    EXPECT_EQ(output_of([&] { operation.run(values); }), "");
    EXPECT_EQ(listed_links(), std::vector<Link>{tunes});
  }
}

TEST(RefusedValues, EachOperationTakesItsGoodValues) {
  for (const Operation &operation : operations) {
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
  EXPECT_EQ(stored_links(), (std::vector<Link>{{fits, "music", "tunes", "media"}}));
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
  Captured captured;
  expect_refused_everywhere("\x01");
  expect_refused_everywhere(std::string(512, 'x'));
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(captured.err(), "");
}

TEST(FailedWrites, AreAnsweredWithZeroAndLeaveTheFiles) {
  store_on_a_read_only_volume();
  Captured captured;
  for (const Operation &operation : operations) {
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
