// The names of shares that nobody adds by hand.
#pragma once

#include "base/text.h"

namespace nasshare {

inline constexpr const char *p2p_name = "P2P";
inline constexpr const char *amule_name = "aMule";

// In the names of the first USB disk's shares.
inline constexpr std::string_view usb_disk_mark = "USBDisk1";

inline bool is_usb_disk_name(std::string_view name) {
  return contains(name, usb_disk_mark);
}

// Removable disks and the download folders never take permissions of an account.
inline bool is_automatic_name(std::string_view name) {
  return is_usb_disk_name(name) || name == p2p_name || name == amule_name;
}

} // namespace nasshare
