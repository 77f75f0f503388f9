// The two data volumes, the two disk bays and the 32 USB slots, as ranges of their indices in the volume
// table.
#pragma once

#include "base/text.h"
#include "nasshare/catalogue.h"

#include <array>
#include <cstddef>

namespace nasshare {

// SMB_VOL_NAME has room for four volumes, but the appliance has two.
inline constexpr std::array volumes{0, 1};
inline constexpr std::array bays{0, 1};

namespace detail {
template <std::size_t Count> constexpr std::array<int, Count> first_numbers() {
  std::array<int, Count> numbers{};
  for (std::size_t i = 0; i < Count; ++i) {
    numbers[i] = static_cast<int>(i);
  }
  return numbers;
}
} // namespace detail

inline constexpr auto usb_slots = detail::first_numbers<32>();

// Whether a caller's number is that of a volume, or of a bay.
inline bool is_volume(int number) {
  return number == volumes.front() || number == volumes.back();
}
inline bool is_bay(int number) {
  return number == bays.front() || number == bays.back();
}

// Every value but 1 means absent.
inline bool is_present(const smb_catalogue &table, int volume) {
  return table.vol_present[volume] == 1;
}
inline bool has_disk(const smb_catalogue &table, int bay) {
  return table.hd_present[bay] == 1;
}
inline bool is_mounted_usb(const smb_catalogue &table, int slot) {
  return table.usb_exist[slot] == 1;
}

// Whether the volume is known to have a hidden system partition: below an empty mount point one would look
// into the root file system, where such a file is nobody's.
inline bool has_hidden_partition(const smb_catalogue &table, int volume) {
  return table.vol_hidden_path[volume][0] != '\0';
}

// Where the volume's data is mounted.
inline std::string_view mount_point(int volume) {
  return SMB_VOL_NAME[volume];
}

// Two readings of a path that lies on a volume, wanted: one that is handed in begins with the mount point,
// and in one that was stored, or that another program wrote, it stands anywhere.
inline bool begins_on_volume(std::string_view path, int volume) {
  return path.starts_with(mount_point(volume));
}
inline bool mentions_volume(std::string_view path, int volume) {
  return contains(path, mount_point(volume));
}

// The share name of a volume that has none configured.
inline constexpr std::string_view default_share_names[] = {"Volume_1", "Volume_2"};

// What people number from 1.
inline int shown_number(int volume) {
  return volume + 1;
}

} // namespace nasshare
