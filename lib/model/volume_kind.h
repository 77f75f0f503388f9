// The codes of vol_raid_type and volume_raid: what a volume is made of.
#pragma once

#include <cstdint>

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

} // namespace nasshare
