// What tells one volume from another, wherever it is mounted: vol_comp_str, and hd_serial of its records.
#pragma once

#include "base/text.h"

namespace nasshare {

// In front of an array's UUID; a single disk's serial stands there alone.
inline constexpr std::string_view uuid_label = "UUID=";

// In place of a disk's serial: its device could not be opened, or did not take the question.
inline constexpr std::string_view unasked_serial = "cant_get_serial_number";

// Whether the identity is an array's.
inline bool is_array_identity(std::string_view identity) {
  return contains(identity, uuid_label);
}

// Whether it tells anything: a disk or an array may not have answered.
inline bool is_known_identity(std::string_view identity) {
  return !identity.empty() && identity != uuid_label;
}

// What the disk in the bay said when it was asked for its serial number last: that it has none counts, but
// not that it could not be asked.
void note_disk_answer(int bay, bool has_told);

// Whether the volume is known for what it is. A disk may have no serial number, which is a fact; one that
// could not be asked may be any, and so may an array that reports no UUID.
bool has_told_identity(int volume);

// Whether the volume's own disk was found, in a bay or in an array, and with it where its records are read.
bool has_known_disk(int volume);

// Whether the mounted device is an array's.
inline bool is_array_device(std::string_view device) {
  return contains(device, "/dev/md") || contains(device, "/dev/mapper/md");
}

} // namespace nasshare
