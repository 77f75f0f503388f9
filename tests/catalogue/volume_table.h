// Volumes as discovery leaves them in the volume table, for tests that read share XML without disks.
#pragma once

#include "nasshare/catalogue.h"

#include <cstdio>
#include <string>

namespace nasshare::tests {

// The volume with that index, its hidden system partition being /mnt/HD_a4 or /mnt/HD_b4.
inline void set_volume(int volume, int type, const std::string &device, const std::string &comp_str) {
  pss->vol_present[volume] = 1;
  pss->vol_raid_type[volume] = type;
  std::snprintf(pss->vol_mount_dev[volume], sizeof pss->vol_mount_dev[volume], "%s", device.c_str());
  std::snprintf(pss->vol_comp_str[volume], sizeof pss->vol_comp_str[volume], "%s", comp_str.c_str());
  std::snprintf(pss->vol_hidden_path[volume], sizeof pss->vol_hidden_path[volume], "/mnt/HD_%c4",
                volume == 0 ? 'a' : 'b');
}

// The serial of a bay, which need not hold a disk of the volume with that index.
inline void set_disk_serial(int bay, const std::string &serial) {
  std::snprintf(pss->disk_serial[bay], sizeof pss->disk_serial[bay], "%s", serial.c_str());
}

// A single disk with that serial as volume 0 or 1.
inline void set_single_disk(int volume, const std::string &serial) {
  set_volume(volume, 1, volume == 0 ? "/dev/sda2" : "/dev/sdb2", serial);
  set_disk_serial(volume, serial);
}

// An array on /dev/md1 as volume 0, of the disks WD-1 and WD-2.
inline void set_array(int type, const std::string &uuid) {
  set_volume(0, type, "/dev/md1", "UUID=" + uuid);
  set_disk_serial(0, "WD-1");
  set_disk_serial(1, "WD-2");
}

} // namespace nasshare::tests
