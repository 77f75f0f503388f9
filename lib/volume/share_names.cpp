#include "nasshare/volume.h"
#include "support/debug.h"
#include "support/lines.h"
#include "support/owners.h"
#include "support/presence.h"
#include "support/text.h"
#include "volume/usb_slot.h"

#include <cstdio>

using namespace nasshare;

namespace {

constexpr const char *shared_name = "/etc/shared_name";

using ShortName = Text<64>; // names and folders have at most 63 characters

struct NameAndFolder {
  ShortName name;
  ShortName folder;
};

// "name = folder"; the folder is empty when the line breaks off or reads otherwise.
NameAndFolder split_line(std::string_view line) {
  NameAndFolder pair;
  pair.name.append(take_word(line));
  auto sign = line.find_first_not_of(" \t\v\f\r\n");
  if (sign != std::string_view::npos && line[sign] == '=') {
    line.remove_prefix(sign + 1);
    pair.folder.append(take_word(line));
  }
  return pair;
}

void set_usb_slot(smb_catalogue &table, int slot, std::string_view name, std::string_view folder) {
  assign(table.usb_share_name[slot], name);
  assign(table.usb_mount_name[slot], folder);
}

void read_usb_line(smb_catalogue &table, std::string_view line) {
  auto [name, folder] = split_line(line);
  bool bare = name.view().size() == 8 && is_bare_usb_folder(folder.view());
  bool bare_default = name.view() == "USBDisk1_c" && folder.view() == "HD_c";
  if (bare || bare_default) {
    set_usb_slot(table, bare_usb_slot, name.view(), folder.view());
  } else if (auto number = usb_folder_number(folder.view())) {
    set_usb_slot(table, *number - 1, name.view(), folder.view());
  }
}

// A line that says "USB" is a USB disk's even when it names a volume's folder.
void read_line(smb_catalogue &table, std::string_view line) {
  if (contains(line, "USB")) {
    read_usb_line(table, line);
  } else if (contains(line, "HD_a2")) {
    assign(table.vol_share_name[0], take_word(line));
  } else if (contains(line, "HD_b2")) {
    assign(table.vol_share_name[1], take_word(line));
  }
}

void set_default_volume_names(smb_catalogue &table) {
  assign(table.vol_share_name[0], "Volume_1");
  assign(table.vol_share_name[1], "Volume_2");
}

void set_default_names(smb_catalogue &table) {
  set_default_volume_names(table);
  for (int slot = 0; slot < bare_usb_slot; ++slot) {
    auto number = decimal_text(slot + 1);
    set_usb_slot(table, slot, ShortName{"USBDisk1_", number.view()}.view(),
                 ShortName{"HD_c", number.view()}.view());
  }
  set_usb_slot(table, bare_usb_slot, "USBDisk1_c", "HD_c");
}

void report(const smb_catalogue &table) {
  list_debug("share name HD_%c2=[%s]\n", 'a', table.vol_share_name[0]);
  list_debug("share name HD_%c2=[%s]\n", 'b', table.vol_share_name[1]);
  for (int slot = 0; slot < 32; ++slot) {
    if (table.usb_exist[slot] == 1) {
      list_debug("i=%d, [%s]\n", slot, table.usb_mount_name[slot]);
    }
  }
}

} // namespace

void get_HD_share_name(smb_catalogue *table) {
  if (table == nullptr) {
    return;
  }
  if (!is_there(shared_name)) {
    set_default_names(*table);
    return;
  }
  File file(open_lines(shared_name));
  if (!file) {
    list_debug("Not found /etc/shared_name file!\n"); // the wording is kept though it was found
    return;
  }
  for (FileLines lines(file.get()); lines.next();) {
    read_line(*table, lines.line());
  }
  report(*table);
  if (view(table->vol_share_name[0]).empty() && view(table->vol_share_name[1]).empty()) {
    set_default_volume_names(*table);
  }
}
