// Describes the appliance that a test needs, as data:
//
//   Appliance{}.disk("sda", "scsi0", "WD-1").mount("/dev/sda2", "/mnt/HD/HD_a2");
//
// Every call acts at once on the private machine in which the test case runs, alone; nothing is taken back.
// A step that fails throws, which fails the case.
//
// The machine starts with the accounts root, nobody, alice (1000), bob (1001), carol (1002) and the groups
// root, nogroup, allaccount (500: alice, bob, carol), staff (501: alice, bob); without disks, volumes,
// arrays, configuration, /etc/exports and /etc/shared_name. smb, smbcom and smbcv are stand-ins that succeed.
#pragma once

#include "text.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace nasshare::tests {

class Appliance {
public:
  Appliance();

  // Two single disks: sda in bay scsi0 (serial WD-TESTDISK0001), sdb in scsi1 (WD-TESTDISK0002), volumes
  // HD_a2 and HD_b2, hidden system partitions HD_a4 and HD_b4.
  static Appliance single_disks();
  // The same disks and hidden partitions; sda2 and sdb2 mirrored as /dev/md1 on HD_a2
  // (UUID 7cc3a0e9:85fa470b:aecd3d11:561a7e11).
  static Appliance mirror();

  // ---- Disks
  // A disk that sg_scan lists, with a plain file as its device; IDENTIFY answers with this serial.
  Appliance &disk(const std::string &name, const std::string &scsi_host, const std::string &serial);
  // The same with bytes 20 to 39 of the IDENTIFY data as the disk sends them.
  Appliance &raw_disk(const std::string &name, const std::string &scsi_host, const std::string &serial_bytes);
  // How SG_IO completes.
  Appliance &disk_status(const std::string &name, int status, int host_status, int driver_status);
  // SG_IO completes with a check condition of that sense key, in fixed format.
  Appliance &disk_sense(const std::string &name, int key);
  // SG_IO itself fails.
  Appliance &disk_fails(const std::string &name);
  // sg_scan lists the disk, but its device cannot be opened.
  Appliance &no_device(const std::string &name);

  // ---- Volumes
  // An empty volume; /proc/mounts and so /etc/mtab name the device.
  Appliance &mount(const std::string &device, const std::string &folder);
  // A hidden system partition: the same with the folder ".systemfile".
  Appliance &hidden(const std::string &device, const std::string &folder);
  Appliance &unmount(const std::string &folder);
  // Nothing can be written in that mounted folder any more.
  Appliance &read_only(const std::string &folder);
  // /etc/mtab becomes a file with exactly this text.
  Appliance &mtab(std::string_view text);
  // What mdadm -D and /proc/mdstat say. Level: linear, raid0, raid1, raid5, raid10.
  Appliance &array(const std::string &name, const std::string &level, const std::string &uuid,
                   const std::vector<std::string> &members);
  // /proc/mdstat with exactly this text. Without this and array() the file does not exist.
  Appliance &mdstat(std::string_view text);

  // ---- Files. Missing folders above are made.
  Appliance &file(const std::string &path, std::string_view text, mode_t mode = 0644);
  Appliance &folder(const std::string &path, mode_t mode = 0755);
  Appliance &link(const std::string &target, const std::string &path);
  // Removes a file, or a folder with everything below it.
  Appliance &remove(const std::string &path);
  // The share XML of the hidden system partition: ".systemfile/.smb.xml", ".systemfile/.smb_ads.xml".
  Appliance &shares(const std::string &hidden_folder, std::string_view text);
  Appliance &ads_shares(const std::string &hidden_folder, std::string_view text);
  // The same on both, /mnt/HD_a4 and /mnt/HD_b4.
  Appliance &shares(std::string_view text);
  Appliance &ads_shares(std::string_view text);
  Appliance &exports(std::string_view text);
  Appliance &shared_name(std::string_view text);

  // ---- Accounts and configuration
  Appliance &user(const std::string &name, uid_t uid, gid_t gid);
  Appliance &group(const std::string &name, gid_t gid, const std::vector<std::string> &members = {});
  // Leaves root and nobody, and the groups root and nogroup.
  Appliance &no_accounts();
  // Stores the value in the configuration database, /etc/NAS_CFG/config.xml.
  Appliance &config(const std::string &key, const std::string &value);

  // ---- Commands. Every stand-in adds a line "name arg1 arg2" to the transcript first.
  // A stand-in that prints a recorded output.
  Appliance &command(const std::string &name, std::string_view output = "", int status = 0,
                     std::string_view error_output = "");
  // A stand-in with a body of its own, in the language of /bin/sh.
  Appliance &script(const std::string &name, std::string_view body);
  // The real command, its calls in the transcript.
  Appliance &logged(const std::string &name);
  // The command is not found, not even the one that is installed.
  Appliance &no_command(const std::string &name);
  // A program at that very path, for what is run without the search path, with a body in the language of
  // /bin/sh.
  Appliance &program(const std::string &path, std::string_view body);
  // No program at that path; the others of its folder stay.
  Appliance &no_program(const std::string &path);

  // ---- The interface egiga0. Without these its requests fail.
  Appliance &hardware_address(const std::string &address);
  // The 20 bytes that the driver leaves for that bay, as they come: last character first.
  Appliance &driver_serial(int bay, const std::string &bytes);
};

// The calls of stand-in commands so far, in order, one per line.
std::string transcript();
// The requests that the kernel's stand-ins answered so far, one per line:
//   SG_IO sda command=85080e0000000100000000000000ec00 data=512 sense=32 timeout=15000
//   SIOCGIFHWADDR egiga0
//   SIOCDEVPRIVATE egiga0 2 0        (command value and bay)
std::string kernel_requests();

std::string read_file(const std::string &path); // throws when it cannot be read
bool exists(const std::string &path);
mode_t mode(const std::string &path); // the permission bits
uid_t owner(const std::string &path);
ino_t inode(const std::string &path);
Names names_in(const std::string &folder); // sorted, hidden ones too
// What the configuration database says, read by the platform.
std::string stored_value(const std::string &key);
// A file of tests/recordings, such as "kernel/mdstat-raid1-0.90.txt".
std::string recording(const std::string &name);

} // namespace nasshare::tests
