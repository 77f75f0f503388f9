// The path of a record that comes from another volume, or from the older layout, moves onto the volume's
// mount point.
#include "base/text.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <cstring>

namespace nasshare {
namespace {

// In the older layout "/mnt/HD_", the volume's letter and "4" stood where the mount point is today.
void leave_older_layout(std::span<char> path, std::string_view root) {
  constexpr std::string_view older_root = "/mnt/HD_";
  const auto text = view(path);
  if (text.starts_with(older_root)) {
    const auto rest = text.substr(std::min(text.size(), older_root.size() + 2));
    assign(path, Text<path_width>{root, rest}.view());
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void fix_path(char *path, int volume) {
  if (path == nullptr || volume < 0 || volume >= std::ssize(SMB_VOL_NAME)) {
    return;
  }
  const std::string_view root = SMB_VOL_NAME[volume];
  const std::span field(path, path_width);
  leave_older_layout(field, root);
  if (view(field).size() < root.size()) {
    assign(field, root);
  } else {
    std::memcpy(path, root.data(), root.size());
  }
}
