#include "nasshare/catalogue.h"
#include "support/text.h"

#include <cstring>

using namespace nasshare;

void fix_share_name(char *name, int volume) {
  if (name == nullptr || volume < 0 || volume > 1) {
    return;
  }
  auto configured = view(pss->vol_share_name[volume]);
  if (!configured.empty()) {
    assign({name, name_width}, configured);
  }
}

void fix_path(char *path, int volume) {
  if (path == nullptr || volume < 0 || volume > 3) {
    return;
  }
  const std::string_view root = SMB_VOL_NAME[volume];
  std::span field(path, path_width);
  auto text = view(field);

  // The older layout: "/mnt/HD_", the volume's letter and "4" stood where the mount point is today.
  constexpr std::string_view old_root = "/mnt/HD_";
  if (text.starts_with(old_root)) {
    auto rest = text.substr(std::min(text.size(), old_root.size() + 2));
    Text<path_width> moved{root, rest};
    assign(field, moved.view());
    text = view(field);
  }

  if (text.size() < root.size()) {
    assign(field, root);
  } else {
    std::memcpy(path, root.data(), root.size());
  }
}
