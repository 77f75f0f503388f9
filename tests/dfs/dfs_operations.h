// Every operation on links and groups that returns a result, and one link and one group for them.
#pragma once

#include "appliance.h"
#include "links.h"
#include "nasshare/dfs.h"

#include <array>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace nasshare::tests {

// An operation that takes values at each of its places; the others are given good ones.
struct DfsOperation {
  const char *name;
  std::size_t values;
  std::function<std::uint32_t(const std::array<const char *, 6> &)> run;
  std::array<const char *, 6> good;
};

inline const std::vector<DfsOperation> operations{
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

inline void store_one_of_each() {
  Appliance{}.file(link_path, link_file({tunes})).file(group_path, group_file({"media"}));
}

inline void expect_files_unchanged() {
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
  EXPECT_EQ(names_in("/etc/NAS_CFG"), (Names{"smbdfs.xml", "smbdfs_group.xml"}));
}

} // namespace nasshare::tests
