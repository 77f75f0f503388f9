// The names by which shares are known that nobody adds by hand. An ISO image's share has the name of its own.
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

// The first USB disk's shares and the download folders never take permissions of an account.
inline bool is_automatic_name(std::string_view name) {
  return is_usb_disk_name(name) || name == p2p_name || name == amule_name;
}

} // namespace nasshare
