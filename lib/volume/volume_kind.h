// The codes of vol_raid_type and volume_raid, and how an array is told from a disk.
#pragma once

#include "support/text.h"

#include <cstdint>
#include <string_view>

namespace nasshare {

enum VolumeKind : std::int32_t {
  unknown_kind = 0,
  single_disk = 1,
  linear = 2,
  striping = 3,
  mirroring = 4,
  striping_with_parity = 5,
  striped_mirrors = 6
};

// In front of an array's UUID in vol_comp_str and hd_serial; a single disk's serial stands there alone.
inline constexpr std::string_view uuid_label = "UUID=";

// Whether the mounted device is an array's.
inline bool is_array_device(std::string_view device) {
  return contains(device, "/dev/md") || contains(device, "/dev/mapper/md");
}

} // namespace nasshare
