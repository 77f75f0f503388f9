// Which volumes, disks and USB disks there are: the volume table, filled from what the other files here find
// out.
#include "base/debug.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "model/volume_identity.h"
#include "model/volume_kind.h"
#include "model/volumes.h"
#include "nasshare/volume.h"
#include "volume/mtab.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace nasshare {
namespace {

// The volume table is the first part of the catalogue; the global settings behind it stay.
void clear_volume_table(smb_catalogue &table) {
  std::memset(static_cast<void *>(&table), 0, offsetof(smb_catalogue, workgroup));
}

void report_mounts(const smb_catalogue &table) {
  for (const auto &device : table.vol_mount_dev) {
    if (device[0] != '\0') {
      list_debug("volume_mount_point [%s]\n", device);
    }
  }
  list_debug("\n");
  for (const int volume : volumes) {
    list_debug("Volume_%d [%d]\n", shown_number(volume), table.vol_present[volume]);
  }
  list_debug("\n");
  for (const int volume : volumes) {
    list_debug("hidden_%d [%d]\n", shown_number(volume), table.vol_hidden[volume]);
  }
  list_debug("\n");
  for (const int slot : usb_slots) {
    if (is_mounted_usb(table, slot)) {
      list_debug("usb %d exist [%d]\n", slot, 1);
    }
  }
}

// Every caller is a short-lived program that has nothing to do without a volume.
void end_without_volume(const smb_catalogue &table) {
  if (table.vol_count == 0 || table.hd_count == 0) {
    list_debug("### NO HD or NO Volume !! ###\n");
    std::exit(-1);
  }
}

void identify_single_disk(smb_catalogue &table, int volume) {
  table.vol_raid_type[volume] = single_disk;
  for (const int bay : bays) {
    if (has_disk(table, bay) && contains(view(table.vol_mount_dev[volume]), view(table.hd_device[bay]))) {
      table.vol_hd[volume] = bay;
      assign(table.vol_comp_str[volume], view(table.disk_serial[bay]));
      return;
    }
  }
}

void identify_array(smb_catalogue &table, int volume) {
  get_raid_uuid(table.vol_uuid[volume], table.vol_mount_dev[volume]);
  assign(table.vol_comp_str[volume], Text<name_width>{uuid_label, view(table.vol_uuid[volume])}.view());
  for (const char *const md_name : {"md1", "md2", "md3", "md4"}) {
    if (contains(view(table.vol_mount_dev[volume]), md_name)) {
      parse_raid_info(&table, volume, md_name);
      return;
    }
  }
}

// The hidden partition's letter is that of the volume's disk: for sdb "/mnt/HD_b4".
void find_hidden_path(smb_catalogue &table, int volume) {
  const auto device = view(table.hd_device[table.vol_hd[volume]]);
  if (device.size() > 2) {
    assign(table.vol_hidden_path[volume], Text<16>{"/mnt/HD_", device.substr(2, 1), "4"}.view());
  }
}

void identify(smb_catalogue &table, int volume) {
  if (is_array_device(view(table.vol_mount_dev[volume]))) {
    identify_array(table, volume);
  } else {
    identify_single_disk(table, volume);
  }
  find_hidden_path(table, volume);
}

void report_volume(const smb_catalogue &table, int volume) {
  const int number = shown_number(volume);
  const int bay = table.vol_hd[volume];
  list_debug("Volume_%d raid type [%d]\n", number, table.vol_raid_type[volume]);
  list_debug("Volume_%d raid uuid [%s]\n", number, table.vol_uuid[volume]);
  list_debug("Volume_%d comp str  [%s]\n", number, table.vol_comp_str[volume]);
  list_debug("Volume_%d which hd  [%d][%s]\n", number, bay, table.hd_device[bay]);
  list_debug("Volume_%d hidden in [%s]\n", number, table.vol_hidden_path[volume]);
  list_debug("\n");
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void get_hd_raid_info(smb_catalogue *table) {
  if (table == nullptr) {
    return;
  }
  const LoadWatch watch;
  clear_volume_table(*table);
  if (read_mtab(*table)) {
    report_mounts(*table);
  }
  get_scsi_map(table);
  list_debug("volume number = %d\n", table->vol_count);
  list_debug("hd number     = %d\n\n", table->hd_count);
  end_without_volume(*table);

  for (const int volume : volumes) {
    if (is_present(*table, volume)) {
      identify(*table, volume);
    }
  }
  list_debug("\n");
  for (const int volume : volumes) {
    if (is_present(*table, volume)) {
      report_volume(*table, volume);
    }
  }
}
