// What the kernel and the tools say of disks and volumes: /etc/mtab, /proc/mdstat, mdadm -D, sg_scan,
// /etc/shared_name, the bytes with which a disk answers.
#include "fuzz.h"
#include "machine.h"

#include "nasshare/volume.h"
#include "volume/mtab.h"

#include <cstddef>
#include <cstring>
#include <memory>

namespace nasshare::fuzzing {
namespace {

constexpr auto settings = offsetof(smb_catalogue, workgroup);

using Table = std::unique_ptr<smb_catalogue>;

// The settings behind the table are not the discovery's.
Table new_table() {
  auto table = std::make_unique<smb_catalogue>();
  std::memset(table->workgroup, 's', sizeof *table - settings);
  return table;
}

bool settings_untouched(const smb_catalogue &table) {
  std::string_view bytes(table.workgroup, sizeof table - settings);
  return bytes.find_first_not_of('s') == std::string_view::npos;
}

template <std::size_t Count, std::size_t Width> bool all_terminated(const char (&fields)[Count][Width]) {
  for (const auto &field : fields) {
    if (!terminated(field)) {
      return false;
    }
  }
  return true;
}

void require_table(const smb_catalogue &table) {
  require(settings_untouched(table), "the settings stay");
  require(all_terminated(table.disk_serial) && all_terminated(table.hd_device) &&
              all_terminated(table.vol_share_name) && all_terminated(table.vol_mount_dev) &&
              all_terminated(table.vol_comp_str) && all_terminated(table.vol_uuid) &&
              all_terminated(table.vol_hidden_path) && all_terminated(table.usb_share_name) &&
              all_terminated(table.usb_mount_name) && terminated(table.other_dev_name),
          "every text ends within its field");
  for (int i = 0; i < 2; ++i) {
    require(is_flag(table.hd_present[i]) && is_flag(table.vol_present[i]) && is_flag(table.vol_hidden[i]) &&
                is_flag(table.vol_hd[i]),
            "flags and bays are 0 or 1");
    require(table.vol_raid_type[i] >= 0 && table.vol_raid_type[i] <= 6, "the kind is a known one");
    std::string_view hidden = table.vol_hidden_path[i];
    require(hidden.empty() || (hidden.starts_with("/mnt/HD_") && hidden.ends_with('4')),
            "the hidden partition has its own place");
  }
  for (int slot = 0; slot < 32; ++slot) {
    require(is_flag(table.usb_exist[slot]) && table.usb_mark[slot] == table.usb_exist[slot],
            "a slot is mounted or not");
  }
}

// Without a volume or a disk the discovery ends the process.
bool has_volume_and_disk() {
  auto table = new_table();
  read_mtab(*table);
  get_scsi_map(table.get());
  for (int volume = 0; volume < 2; ++volume) {
    parse_raid_info(table.get(), volume, "md1");
  }
  require_table(*table);
  return table->hd_count > 0 && table->vol_count > 0;
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  machine::file("/etc/mtab", parts.next());
  machine::file("/proc/mdstat", parts.next());
  machine::command("mdadm", parts.next());
  machine::command("sg_scan", parts.next());
  auto names = parts.next();
  machine::file("/etc/shared_name", names);
  machine::device(parts.next());
  for (const char *disk : {"/dev/sda", "/dev/sdb"}) {
    machine::file(disk, "");
  }

  auto table = new_table();
  get_HD_share_name(table.get());
  require_table(*table);
  if (!has_volume_and_disk()) {
    return;
  }
  get_hd_raid_info(table.get());
  require_table(*table);
  auto again = new_table();
  get_hd_raid_info(again.get());
  require(std::memcmp(table.get(), again.get(), settings) == 0, "the discovery twice equals once");
}

} // namespace nasshare::fuzzing
