// The share names of volumes and USB disks: /etc/shared_name, lines "name = folder", which the appliance
// keeps.
#include "base/debug.h"
#include "base/lines.h"
#include "base/presence.h"
#include "base/text.h"
#include "model/automatic_shares.h"
#include "model/load_verdict.h"
#include "model/usb_slot.h"
#include "model/volumes.h"
#include "nasshare/volume.h"

namespace nasshare {
namespace {

constexpr const char *shared_name = "/etc/shared_name";

using ShortName = Text<64>; // names and folders have at most 63 characters

struct NameAndFolder {
  ShortName name;
  ShortName folder;
};

// The folder is empty when the line breaks off or reads otherwise.
NameAndFolder split(std::string_view line) {
  NameAndFolder pair;
  pair.name.append(take_word(line));
  if (take(line, "=")) {
    pair.folder.append(take_word(line));
  }
  return pair;
}

void set_usb_slot(smb_catalogue &table, int slot, std::string_view name, std::string_view folder) {
  assign(table.usb_share_name[slot], name);
  assign(table.usb_mount_name[slot], folder);
}

void read_usb_line(smb_catalogue &table, std::string_view line) {
  const auto [name, folder] = split(line);
  const bool is_bare = name.view().size() == 8 && is_bare_usb_folder(folder.view());
  const bool is_bare_default = name.view() == "USBDisk1_c" && folder.view() == "HD_c";
  if (is_bare || is_bare_default) {
    set_usb_slot(table, bare_usb_slot, name.view(), folder.view());
  } else if (const auto number = usb_folder_number(folder.view())) {
    set_usb_slot(table, *number - 1, name.view(), folder.view());
  }
}

// A line that says "USB" is a USB disk's even when it names a volume's folder: wanted.
void read_name_line(smb_catalogue &table, std::string_view line) {
  if (contains(line, "USB")) {
    read_usb_line(table, line);
  } else if (contains(line, "HD_a2")) {
    assign(table.vol_share_name[0], take_word(line));
  } else if (contains(line, "HD_b2")) {
    assign(table.vol_share_name[1], take_word(line));
  }
}

void set_default_volume_names(smb_catalogue &table) {
  for (const int volume : volumes) {
    assign(table.vol_share_name[volume], default_share_names[volume]);
  }
}

void set_default_names(smb_catalogue &table) {
  set_default_volume_names(table);
  for (const int slot : usb_slots) {
    const auto suffix = slot == bare_usb_slot ? Text<16>() : decimal_text(slot + 1);
    const ShortName name{usb_disk_mark, "_", suffix.is_empty() ? "c" : suffix.view()};
    set_usb_slot(table, slot, name.view(), ShortName{"HD_c", suffix.view()}.view());
  }
}

void report(const smb_catalogue &table) {
  list_debug("share name HD_%c2=[%s]\n", 'a', table.vol_share_name[0]);
  list_debug("share name HD_%c2=[%s]\n", 'b', table.vol_share_name[1]);
  for (const int slot : usb_slots) {
    if (is_mounted_usb(table, slot)) {
      list_debug("i=%d, [%s]\n", slot, table.usb_mount_name[slot]);
    }
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void get_HD_share_name(smb_catalogue *table) {
  if (table == nullptr) {
    return;
  }
  const LoadWatch watch;
  if (!exists_or_note(shared_name)) {
    set_default_names(*table);
    return;
  }
  FileLines lines(shared_name);
  if (!lines.is_open()) {
    list_debug("Not found /etc/shared_name file!\n"); // though it was found: wanted, it has always said so
    return;
  }
  for (const auto line : lines) {
    read_name_line(*table, line);
  }
  report(*table);
  // With one name, the other volume has none: wanted.
  if (view(table->vol_share_name[0]).empty() && view(table->vol_share_name[1]).empty()) {
    set_default_volume_names(*table);
  }
}
