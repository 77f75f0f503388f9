// What tells one volume from another, wherever it is mounted: vol_comp_str, and hd_serial of its records.
#pragma once

#include "base/text.h"

namespace nasshare {

// In front of an array's UUID; a single disk's serial stands there alone.
inline constexpr std::string_view uuid_label = "UUID=";

// Whether the identity is an array's.
inline bool is_array_identity(std::string_view identity) {
  return contains(identity, uuid_label);
}

// Whether it tells anything: a disk or an array may not have answered.
inline bool is_known_identity(std::string_view identity) {
  return !identity.empty() && identity != uuid_label;
}

// Whether the mounted device is an array's.
inline bool is_array_device(std::string_view device) {
  return contains(device, "/dev/md") || contains(device, "/dev/mapper/md");
}

} // namespace nasshare
