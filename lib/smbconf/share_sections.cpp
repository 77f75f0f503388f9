// One section of smb.conf for each share.
#include "acl/access_list.h"
#include "acl/samba_form.h"
#include "base/linked_list.h"
#include "base/text.h"
#include "model/volumes.h"
#include "nasshare/smbconf.h"
#include "smbconf/option_lines.h"
#include "smbconf/sections.h"
#include "smbconf/usb_permissions.h"

#include <array>

namespace nasshare {
namespace {

bool has_recycle_bin(const smb_share &share) {
  return share.recycle_enable == 1;
}

void mark_recycling_volume(const smb_share &share) {
  for (const int volume : volumes) {
    if (has_recycle_bin(share) && mentions_volume(view(share.path), volume)) {
      pss->vol_recycle[volume] = 1;
    }
  }
}

// The listed record keeps its own form: the file may yet turn out not to be written. Whether the list in
// Samba's form names all that it did.
[[nodiscard]] bool write_list_or_note(FILE *file, const char *option, std::span<const char> list) {
  Text<list_width> converted;
  assign_list(converted.field(), view(list));
  const bool is_whole = convert_list_or_note(converted.field().data());
  write_option(file, option, converted.c_str());
  return is_whole;
}

void write_lists_or_note(FILE *file, const smb_share &share) {
  // Whoever is left out of these cannot enter, which harms nobody else.
  static_cast<void>(write_list_or_note(file, "read list", share.read_list));
  static_cast<void>(write_list_or_note(file, "write list", share.write_list));
  if (!write_list_or_note(file, "invalid users", share.invalid_users)) {
    note_doubt(); // but whoever is left out of this one would be let in
  }
  static_cast<void>(write_list_or_note(file, "valid users", share.valid_users));
}

void write_recycle_options(FILE *file, smb_share &share) {
  std::fprintf(file, "vfs object = recycle\n");
  if (share.recycle_tree == 1) {
    std::fprintf(file, "recycle:keeptree = yes\n");
  }
  std::fprintf(file, "recycle:versions = yes\n");
  std::fprintf(file, "recycle:subdir_mode = 0700\n");
  std::array<char, path_width> repository{};
  make_related_path(repository.data(), cal_slash_num(share.path));
  std::fprintf(file, "recycle:repository = %s/%%u\n", repository.data());
}

void write_share(FILE *file, smb_share &share, const FileServices &services) {
  write_section(file, view(share.name));
  write_option(file, "comment", view(share.comment));
  open_usb_permissions(share.path);
  write_option(file, "path", view(share.path));
  mark_recycling_volume(share);
  write_option(file, "browseable", view(share.browseable));
  write_option(file, "public", view(share.public_));
  write_option(file, "oplocks", services.forbid_oplocks_or_note(share.path) ? "no" : view(share.oplocks));
  write_option(file, "map archive", view(share.map_archive));
  write_lists_or_note(file, share);
  if (has_recycle_bin(share)) {
    write_recycle_options(file, share);
  }
}

} // namespace

bool write_share_sections(FILE *file, const FileServices &services) {
  bool is_first = true;
  bool any_recycles = false;
  for (auto &share : each(*pss)) {
    if (!is_first) {
      std::fprintf(file, "\n");
    }
    write_share(file, share, services);
    is_first = false;
    any_recycles = any_recycles || has_recycle_bin(share);
  }
  return any_recycles;
}

} // namespace nasshare
