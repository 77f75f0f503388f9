// The slot of a USB disk, told by the folder below /mnt/USB on which it is mounted: "HD_", a letter and a
// number from 1 to 31 is the slot before that number, "HD_" and a letter alone the last one.
#pragma once

#include "base/decimal.h"

#include <optional>

namespace nasshare {

inline constexpr std::string_view usb_root = "/mnt/USB/";

inline constexpr int bare_usb_slot = 31;

inline bool is_bare_usb_folder(std::string_view folder) {
  return folder.size() == 4;
}

inline std::optional<int> usb_folder_number(std::string_view folder) {
  const auto number = folder.size() > 4 ? decimal(folder.substr(4)) : 0;
  return number >= 1 && number <= bare_usb_slot ? std::optional(number) : std::nullopt;
}

} // namespace nasshare
