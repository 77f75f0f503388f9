// A volume table of its own for each test, empty or after discovery.
#pragma once

#include "nasshare/volume.h"

#include <gtest/gtest.h>
#include <memory>

namespace nasshare::tests {

using VolumeTable = std::unique_ptr<smb_catalogue>;

inline VolumeTable empty_table() {
  return std::make_unique<smb_catalogue>();
}

inline VolumeTable discovered() {
  auto table = empty_table();
  get_hd_raid_info(table.get());
  return table;
}

// Each disk of Appliance::single_disks() carries its own volume.
inline void expect_two_single_disks(const VolumeTable &table) {
  EXPECT_EQ(table->hd_count, 2);
  EXPECT_EQ(table->vol_count, 2);
  EXPECT_EQ(table->vol_raid_type[0], 1);
  EXPECT_EQ(table->vol_raid_type[1], 1);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_EQ(table->vol_hd[1], 1);
  EXPECT_STREQ(table->vol_comp_str[0], "WD-TESTDISK0001");
  EXPECT_STREQ(table->vol_comp_str[1], "WD-TESTDISK0002");
  EXPECT_STREQ(table->vol_hidden_path[0], "/mnt/HD_a4");
  EXPECT_STREQ(table->vol_hidden_path[1], "/mnt/HD_b4");
}

} // namespace nasshare::tests
