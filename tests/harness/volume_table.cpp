// Filling the volume table.
#include "volume_table.h"

#include "fields.h"
#include "nasshare/catalogue.h"

namespace nasshare::tests {

void set_volume(int volume, int type, const std::string &device, const std::string &comp_str) {
  smbshare.vol_present[volume] = 1;
  smbshare.vol_raid_type[volume] = type;
  put(smbshare.vol_mount_dev[volume], device);
  put(smbshare.vol_comp_str[volume], comp_str);
  put(smbshare.vol_hidden_path[volume], volume == 0 ? "/mnt/HD_a4" : "/mnt/HD_b4");
}

void set_disk_serial(int bay, const std::string &serial) {
  put(smbshare.disk_serial[bay], serial);
}

void set_single_disk(int volume, const std::string &serial) {
  set_volume(volume, 1, volume == 0 ? "/dev/sda2" : "/dev/sdb2", serial);
  set_disk_serial(volume, serial);
}

void set_array(int type, const std::string &uuid) {
  set_volume(0, type, "/dev/md1", "UUID=" + uuid);
  set_disk_serial(0, "WD-1");
  set_disk_serial(1, "WD-2");
}

} // namespace nasshare::tests
