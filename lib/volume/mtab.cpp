#include "volume/mtab.h"

#include "nasshare/volume.h"
#include "support/debug.h"
#include "support/lines.h"
#include "support/owners.h"
#include "support/text.h"
#include "volume/usb_slot.h"

using namespace nasshare;

namespace {

constexpr const char *mtab = "/etc/mtab";

// The leading blank makes a pattern match the mount point, not the device.
constexpr std::string_view data_mount[2] = {" /mnt/HD/HD_a2", " /mnt/HD/HD_b2"};
constexpr std::string_view hidden_mount[2] = {" /mnt/HD_a4", " /mnt/HD_b4"};

// The folder below /mnt/USB of a line "device /mnt/USB/folder ..."; empty when the mount point is another.
std::string_view usb_folder(std::string_view line) {
  constexpr std::string_view root = "/mnt/USB/";
  take_word(line);
  auto mount_point = take_word(line);
  return mount_point.starts_with(root) ? mount_point.substr(root.size()) : std::string_view();
}

void read_usb_mount(smb_catalogue &table, std::string_view line) {
  auto folder = usb_folder(line);
  if (is_bare_usb_folder(folder)) {
    table.usb_exist[bare_usb_slot] = 1;
    table.usb_mark[bare_usb_slot] = 1;
    return;
  }
  auto number = usb_folder_number(folder);
  if (!number) {
    return;
  }
  auto &exists = table.usb_exist[*number - 1];
  if (exists != 1) {
    exists = 1;
    trace_debug("USB no [%d]\n", *number);
    table.usb_mark[*number - 1] = 1;
  }
}

} // namespace

void nasshare::read_mtab_line(smb_catalogue &table, std::string_view line) {
  if (contains(line, " /mnt/USB/HD_")) {
    read_usb_mount(table, line);
  }
  for (int volume = 0; volume < 2; ++volume) {
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

bool nasshare::read_mtab(smb_catalogue &table) {
  File file(open_lines(mtab));
  for (FileLines lines(file.get()); lines.next();) {
    read_mtab_line(table, lines.line());
  }
  return static_cast<bool>(file);
}

int parse_check_hidden(smb_catalogue *table, int disk) {
  if (table == nullptr || disk < 0 || disk > 1) {
    return 0;
  }
  Text<name_width + 1> partition{view(table->hd_device[disk]), "4"};
  File file(open_lines(mtab));
  for (FileLines lines(file.get()); lines.next();) {
    if (contains(lines.line(), partition.view())) {
      return 1;
    }
  }
  return 0;
}
