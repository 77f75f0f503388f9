/* A volume table of its own for each test, empty or after discovery. */
#ifndef NASSHARE_TESTS_VOLUME_TABLE_H
#define NASSHARE_TESTS_VOLUME_TABLE_H

#include "nasshare/volume.h"

#include <memory>

using VolumeTable = std::unique_ptr<smb_catalogue>;

inline VolumeTable empty_table() {
  return std::make_unique<smb_catalogue>();
}

inline VolumeTable discovered() {
  auto table = empty_table();
  get_hd_raid_info(table.get());
  return table;
}

#endif
