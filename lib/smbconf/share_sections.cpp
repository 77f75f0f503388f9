// One section of smb.conf for each share. Its lists in memory are in Samba's form afterwards.
#include "base/linked_list.h"
#include "base/text.h"
#include "model/volumes.h"
#include "nasshare/acl.h"
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

void write_list(FILE *file, const char *option, char *list) {
  convert_list(list);
  write_option(file, option, list);
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
  write_list(file, "read list", share.read_list);
  write_list(file, "write list", share.write_list);
  write_list(file, "invalid users", share.invalid_users);
  write_list(file, "valid users", share.valid_users);
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
