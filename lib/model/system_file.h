// The appliance's own files on a hidden system partition: they lie in its folder ".systemfile".
#pragma once

#include "base/text.h"

namespace nasshare {

inline constexpr std::string_view system_folder = "/.systemfile";

using SystemFile = Text<path_width>;

// The file's path on the partition with that mount point, such as "/mnt/HD_a4/.systemfile/.smb.xml".
inline SystemFile system_file(std::string_view mount_point, std::string_view name) {
  return {mount_point, system_folder, "/", name};
}

} // namespace nasshare
