// Volumes as discovery leaves them in the catalogue's volume table, for tests that have no disks.
#pragma once

#include <string>

namespace nasshare::tests {

// The volume with that index, its hidden system partition being /mnt/HD_a4 or /mnt/HD_b4.
void set_volume(int volume, int type, const std::string &device, const std::string &comp_str);

// The serial of a bay, which need not hold a disk of the volume with that index.
void set_disk_serial(int bay, const std::string &serial);

// A single disk with that serial as volume 0 or 1.
void set_single_disk(int volume, const std::string &serial);

// An array on /dev/md1 as volume 0, of the disks WD-1 and WD-2.
void set_array(int type, const std::string &uuid);

// What discovery traces of the disks of a machine with two single disks or a mirror.
inline constexpr const char *disk_map_trace = "##hd device name from sda ~ sdp\n"
                                              "\thd_device_name 0 = sda\n"
                                              "\thd_device_name 1 = sdb\n"
                                              "HD scsi0 = [WD-TESTDISK0001]\n"
                                              "HD scsi1= [WD-TESTDISK0002]\n";

} // namespace nasshare::tests
