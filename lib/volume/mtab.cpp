// What /etc/mtab says of the data volumes, the hidden system partitions and the USB disks.
#include "volume/mtab.h"

#include "base/debug.h"
#include "base/lines.h"
#include "base/text.h"
#include "model/usb_slot.h"
#include "model/volumes.h"
#include "nasshare/volume.h"

namespace nasshare {
namespace {

constexpr const char *mtab = "/etc/mtab";

// The leading blank makes a pattern match the mount point, not the device.
constexpr std::string_view data_mount[] = {" /mnt/HD/HD_a2", " /mnt/HD/HD_b2"};
constexpr std::string_view hidden_mount[] = {" /mnt/HD_a4", " /mnt/HD_b4"};

// The folder below /mnt/USB of a line "device /mnt/USB/folder ..."; empty when the mount point is another.
std::string_view usb_folder(std::string_view line) {
  take_word(line);
  const auto mounted_on = take_word(line);
  return mounted_on.starts_with(usb_root) ? mounted_on.substr(usb_root.size()) : std::string_view();
}

void read_usb_mount(smb_catalogue &table, std::string_view line) {
  const auto folder = usb_folder(line);
  if (is_bare_usb_folder(folder)) {
    table.usb_exist[bare_usb_slot] = 1;
    table.usb_mark[bare_usb_slot] = 1;
    return;
  }
  const auto number = usb_folder_number(folder);
  if (number && !is_mounted_usb(table, *number - 1)) {
    table.usb_exist[*number - 1] = 1;
    trace_debug("USB no [%d]\n", *number);
    table.usb_mark[*number - 1] = 1;
  }
}

} // namespace

void read_mtab_line(smb_catalogue &table, std::string_view line) {
  if (contains(line, " /mnt/USB/HD_")) {
    read_usb_mount(table, line);
  }
  for (const int volume : volumes) {
    if (contains(line, data_mount[volume])) {
      ++table.vol_count;
      table.vol_present[volume] = 1;
      auto rest = line;
      assign(table.vol_mount_dev[volume], take_word(rest));
    }
    if (contains(line, hidden_mount[volume])) {
      table.vol_hidden[volume] = 1;
    }
  }
}

bool read_mtab(smb_catalogue &table) {
  FileLines lines(mtab);
  for (const auto line : lines) {
    read_mtab_line(table, line);
  }
  return lines.is_open();
}

} // namespace nasshare

using namespace nasshare;

int parse_check_hidden(smb_catalogue *table, int disk) {
  if (table == nullptr || !is_bay(disk)) {
    return 0;
  }
  const Text<name_width + 1> partition{view(table->hd_device[disk]), "4"};
  for (const auto line : FileLines(mtab)) {
    if (contains(line, partition.view())) {
      return 1;
    }
  }
  return 0;
}
