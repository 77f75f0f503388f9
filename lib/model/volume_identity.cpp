// Which volumes have told who they are.
#include "model/volume_identity.h"

#include "model/volumes.h"

namespace nasshare {
namespace {

std::array<bool, bays.size()> have_told{};

bool holds_single_disk_of(int volume, int bay) {
  return has_disk(*pss, bay) && contains(view(pss->vol_mount_dev[volume]), view(pss->hd_device[bay]));
}

bool is_serial(std::string_view identity) {
  return !identity.empty() && identity != unasked_serial;
}

} // namespace

void note_disk_answer(int bay, bool has_told) {
  have_told[static_cast<std::size_t>(bay)] = has_told;
}

bool has_told_identity(int volume) {
  const auto identity = view(pss->vol_comp_str[volume]);
  if (is_array_device(view(pss->vol_mount_dev[volume])) || is_serial(identity)) {
    return is_known_identity(identity);
  }
  const int bay = pss->vol_hd[volume];
  return is_bay(bay) && have_told[static_cast<std::size_t>(bay)] && holds_single_disk_of(volume, bay);
}

bool has_known_disk(int volume) {
  const int bay = pss->vol_hd[volume];
  return has_hidden_partition(*pss, volume) && is_bay(bay) &&
         (is_array_device(view(pss->vol_mount_dev[volume])) || holds_single_disk_of(volume, bay));
}

} // namespace nasshare
