// The appliance: its disks, volumes, files and accounts.
#include "appliance.h"

#include "files.h"

#include <sys/mount.h>
#include <unistd.h>

namespace nasshare::tests {

namespace {

std::string described(const std::string &name) {
  return "/run/appliance/" + name;
}

std::string description(const std::string &disk) {
  return described("disks/" + disk);
}

std::string hexadecimal(const std::string &bytes) {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += {digits[value >> 4], digits[value & 15], ' '};
  }
  return text;
}

void describe_disk(const std::string &name, const std::string &lines) {
  files::write("/dev/" + name, "");
  files::write(description(name), lines);
}

Appliance two_disks() {
  return Appliance{}
      .disk("sda", "scsi0", "WD-TESTDISK0001")
      .disk("sdb", "scsi1", "WD-TESTDISK0002")
      .hidden("/dev/sda4", "/mnt/HD_a4")
      .hidden("/dev/sdb4", "/mnt/HD_b4");
}

} // namespace

Appliance::Appliance() {
  for (const char *service : {"smb", "smbcom", "smbcv"}) {
    command(service);
  }
}

Appliance Appliance::single_disks() {
  return two_disks().mount("/dev/sda2", "/mnt/HD/HD_a2").mount("/dev/sdb2", "/mnt/HD/HD_b2");
}

Appliance Appliance::mirror() {
  return two_disks()
      .array("md1", "raid1", "7cc3a0e9:85fa470b:aecd3d11:561a7e11", {"sda2", "sdb2"})
      .mount("/dev/md1", "/mnt/HD/HD_a2");
}

Appliance &Appliance::disk(const std::string &name, const std::string &scsi_host, const std::string &serial) {
  describe_disk(name, "scsi " + scsi_host + "\nserial " + serial + "\n");
  return *this;
}

Appliance &Appliance::raw_disk(const std::string &name, const std::string &scsi_host,
                               const std::string &serial_bytes) {
  describe_disk(name, "scsi " + scsi_host + "\nserial_bytes " + hexadecimal(serial_bytes) + "\n");
  return *this;
}

Appliance &Appliance::disk_status(const std::string &name, int status, int host_status, int driver_status) {
  files::append(description(name), "status " + std::to_string(status) + "\nhost_status " +
                                       std::to_string(host_status) + "\ndriver_status " +
                                       std::to_string(driver_status) + "\n");
  return *this;
}

Appliance &Appliance::disk_sense(const std::string &name, int key) {
  files::append(description(name), "sense_key " + std::to_string(key) + "\n");
  return disk_status(name, 2, 0, 0);
}

Appliance &Appliance::disk_fails(const std::string &name) {
  files::append(description(name), "fail\n");
  return *this;
}

Appliance &Appliance::no_device(const std::string &name) {
  return remove("/dev/" + name);
}

Appliance &Appliance::mount(const std::string &device, const std::string &folder) {
  files::make_folder(folder);
  files::require(::mount(device.c_str(), folder.c_str(), "tmpfs", 0, "mode=0755") == 0, "mount " + folder);
  return *this;
}

Appliance &Appliance::hidden(const std::string &device, const std::string &folder) {
  return mount(device, folder).folder(folder + "/.systemfile");
}

Appliance &Appliance::read_only(const std::string &folder) {
  files::require(::mount(nullptr, folder.c_str(), "", MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0,
                 "make " + folder + " read-only");
  return *this;
}

Appliance &Appliance::unmount(const std::string &folder) {
  files::require(::umount(folder.c_str()) == 0, "unmount " + folder);
  return *this;
}

Appliance &Appliance::mtab(std::string_view text) {
  return remove("/etc/mtab").file("/etc/mtab", text);
}

Appliance &Appliance::array(const std::string &name, const std::string &level, const std::string &uuid,
                            const std::vector<std::string> &members) {
  std::vector<std::string> words{"appliance-array", name, level, uuid};
  words.insert(words.end(), members.begin(), members.end());
  files::run(words);
  return *this;
}

Appliance &Appliance::mdstat(std::string_view text) {
  return file(described("mdstat"), text);
}

Appliance &Appliance::file(const std::string &path, std::string_view text, mode_t mode) {
  files::make_folder_above(path);
  files::write(path, text, mode);
  return *this;
}

Appliance &Appliance::folder(const std::string &path, mode_t mode) {
  files::make_folder(path, mode);
  return *this;
}

Appliance &Appliance::link(const std::string &target, const std::string &path) {
  files::make_folder_above(path);
  files::require(::symlink(target.c_str(), path.c_str()) == 0, "link " + path);
  return *this;
}

Appliance &Appliance::remove(const std::string &path) {
  files::remove(path);
  return *this;
}

Appliance &Appliance::shares(const std::string &hidden_folder, std::string_view text) {
  return file(hidden_folder + "/.systemfile/.smb.xml", text);
}

Appliance &Appliance::ads_shares(const std::string &hidden_folder, std::string_view text) {
  return file(hidden_folder + "/.systemfile/.smb_ads.xml", text);
}

Appliance &Appliance::shares(std::string_view text) {
  return shares("/mnt/HD_a4", text).shares("/mnt/HD_b4", text);
}

Appliance &Appliance::ads_shares(std::string_view text) {
  return ads_shares("/mnt/HD_a4", text).ads_shares("/mnt/HD_b4", text);
}

Appliance &Appliance::exports(std::string_view text) {
  return file("/etc/exports", text);
}

Appliance &Appliance::shared_name(std::string_view text) {
  return file("/etc/shared_name", text);
}

Appliance &Appliance::user(const std::string &name, uid_t uid, gid_t gid) {
  files::append("/etc/passwd", name + ":x:" + std::to_string(uid) + ":" + std::to_string(gid) + "::/home/" +
                                   name + ":/bin/sh\n");
  files::append("/etc/shadow", name + ":*:19000::::::\n");
  return *this;
}

Appliance &Appliance::group(const std::string &name, gid_t gid, const std::vector<std::string> &members) {
  files::append("/etc/group", name + ":x:" + std::to_string(gid) + ":" + joined(members, ",") + "\n");
  return *this;
}

Appliance &Appliance::no_accounts() {
  return file("/etc/passwd", "root:x:0:0:root:/root:/bin/sh\nnobody:x:65534:65534:nobody:/:/bin/false\n")
      .file("/etc/group", "root:x:0:\nnogroup:x:65534:\n")
      .file("/etc/shadow", "root:*:19000::::::\nnobody:*:19000::::::\n", 0600);
}

Appliance &Appliance::hardware_address(const std::string &address) {
  return file(described("egiga0"), address);
}

Appliance &Appliance::driver_serial(int bay, const std::string &bytes) {
  return file(described("driver-serial-" + std::to_string(bay)), bytes);
}

} // namespace nasshare::tests
