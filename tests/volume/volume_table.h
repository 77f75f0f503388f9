// A volume table of its own for each test, empty or after discovery.
#pragma once

#include "nasshare/volume.h"

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

} // namespace nasshare::tests
