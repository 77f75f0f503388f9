// The share of a whole volume bears the volume's configured name.
#include "catalogue/share_name_fix.h"

#include "catalogue/ampersands.h"
#include "model/volumes.h"

#include <algorithm>
#include <array>

namespace nasshare {

void take_configured_name(std::span<char, name_width> name, std::string_view path, int volume) {
  const bool is_whole_volume =
      std::ranges::any_of(volumes, [path](int root) { return path == mount_point(root); });
  const bool has_default_name =
      std::ranges::find(default_share_names, view(name)) != std::end(default_share_names);
  if (is_whole_volume && has_default_name) {
    fix_share_name(name.data(), volume);
  }
}

bool comes_back_as_another(const smb_share &record, int volume) {
  std::array<char, name_width> name{};
  std::array<char, path_width> path{};
  assign(name, view(record.name));
  assign(path, view(record.path));
  recover_ampersands(name);
  recover_ampersands(path);
  take_configured_name(name, view(path), volume);
  return view(name) != view(record.name) && check_smb_share_name(name.data()) != nullptr;
}

} // namespace nasshare

using namespace nasshare;

void fix_share_name(char *name, int volume) {
  if (name == nullptr || !is_volume(volume)) {
    return;
  }
  const auto configured = view(pss->vol_share_name[volume]);
  if (!configured.empty()) {
    assign({name, name_width}, configured);
  }
}
