#include "volume/mdstat.h"

#include "nasshare/volume.h"
#include "support/lines.h"
#include "support/owners.h"
#include "support/text.h"
#include "volume/volume_kind.h"

using namespace nasshare;

std::int32_t nasshare::array_kind(std::string_view line, std::string_view md_name, std::int32_t otherwise) {
  if (contains(line, "linear")) {
    return linear;
  }
  if (contains(line, "raid1")) {
    return mirroring;
  }
  if (contains(line, "raid0")) {
    bool over_mirrors = contains(md_name, "md3") && contains(line, "md1") && contains(line, "md2");
    return over_mirrors ? striped_mirrors : striping;
  }
  return contains(line, "raid5") ? striping_with_parity : otherwise;
}

namespace {

// The line of striped mirrors names arrays, not disks: any disk whose hidden partition is mounted will do.
bool is_member(smb_catalogue &table, int disk, std::string_view line, std::int32_t kind) {
  auto device = view(table.hd_device[disk]);
  bool named = contains(line, device) || (kind == striped_mirrors && !device.empty());
  return named && parse_check_hidden(&table, disk) == 1;
}

void read_mdstat_line(smb_catalogue &table, int volume, std::string_view md_name, std::string_view line) {
  auto &kind = table.vol_raid_type[volume];
  kind = array_kind(line, md_name, kind);
  for (int disk = 0; disk < 2; ++disk) {
    if (table.hd_present[disk] == 1 && is_member(table, disk, line, kind)) {
      table.vol_hd[volume] = disk;
      return;
    }
  }
}

} // namespace

int parse_raid_info(smb_catalogue *table, int volume, const char *md_name) {
  File mdstat(open_lines("/proc/mdstat"));
  if (!mdstat || table == nullptr || md_name == nullptr || volume < 0 || volume > 1) {
    return -1;
  }
  for (FileLines lines(mdstat.get()); lines.next();) {
    if (contains(lines.line(), md_name)) { // of several such lines the last one counts
      read_mdstat_line(*table, volume, md_name, lines.line());
    }
  }
  return mdstat.close();
}
