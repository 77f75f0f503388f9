// What /proc/mdstat says of an array: its kind, and a disk that it lies on.
#include "volume/mdstat.h"

#include "base/lines.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "model/volume_kind.h"
#include "model/volumes.h"
#include "nasshare/volume.h"

namespace nasshare {
namespace {

// The line of striped mirrors names arrays, not disks: any disk whose hidden partition is mounted will do.
bool is_member(smb_catalogue &table, int bay, std::string_view line, std::int32_t kind) {
  const auto device = view(table.hd_device[bay]);
  const bool is_named = contains(line, device) || (kind == striped_mirrors && !device.empty());
  return is_named && parse_check_hidden(&table, bay) == 1;
}

void read_mdstat_line(smb_catalogue &table, int volume, std::string_view md_name, std::string_view line) {
  auto &kind = table.vol_raid_type[volume];
  kind = array_kind(line, md_name, kind);
  for (const int bay : bays) {
    if (has_disk(table, bay) && is_member(table, bay, line, kind)) {
      table.vol_hd[volume] = bay;
      return;
    }
  }
}

} // namespace

std::int32_t array_kind(std::string_view line, std::string_view md_name, std::int32_t otherwise) {
  if (contains(line, "linear")) {
    return linear;
  }
  if (contains(line, "raid1")) {
    return mirroring;
  }
  if (contains(line, "raid0")) {
    const bool is_over_mirrors = contains(md_name, "md3") && contains(line, "md1") && contains(line, "md2");
    return is_over_mirrors ? striped_mirrors : striping;
  }
  return contains(line, "raid5") ? striping_with_parity : otherwise;
}

} // namespace nasshare

using namespace nasshare;

int parse_raid_info(smb_catalogue *table, int volume, const char *md_name) {
  const LoadWatch watch;
  FileLines mdstat("/proc/mdstat");
  if (!mdstat.is_open() || table == nullptr || md_name == nullptr || !is_volume(volume)) {
    return -1;
  }
  for (const auto line : mdstat) {
    if (contains(line, md_name)) { // of several such lines the last one counts
      read_mdstat_line(*table, volume, md_name, line);
    }
  }
  return mdstat.close();
}
