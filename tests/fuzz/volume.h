// A volume for the readers of files that lie on one.
#pragma once

#include "fuzz.h"
#include "machine.h"

#include "nasshare/catalogue.h"

#include <utility>

namespace nasshare::fuzzing {

// Describes the volume in words such as "mirror second ads" and returns its number.
inline int describe_volume(std::string_view words) {
  int volume = contains(words, "second") ? 1 : 0;
  constexpr std::pair<std::string_view, int> kinds[] = {
      {"linear", 2}, {"stripe", 3}, {"mirror", 4}, {"parity", 5}, {"unknown", 0}};
  auto &kind = pss->vol_raid_type[volume];
  kind = 1;
  for (const auto &[word, code] : kinds) {
    kind = contains(words, word) ? code : kind;
  }
  pss->vol_present[volume] = 1;
  assign(pss->vol_mount_dev[volume], kind == 1 ? "/dev/sda2" : "/dev/md1");
  assign(pss->vol_comp_str[volume], kind == 1 ? "WD-1" : "UUID=7cc3a0e9:85fa470b:aecd3d11:561a7e11");
  assign(pss->disk_serial[volume], "WD-1");
  assign(pss->vol_hidden_path[volume], "/mnt/HD_a4");
  assign(pss->vol_share_name[volume], contains(words, "named") ? "Configured" : "");
  pss->ads_enable = contains(words, "ads") ? 1 : 0;
  machine::folders(!contains(words, "gone"));
  return volume;
}

} // namespace nasshare::fuzzing
