#include "nasshare/acl.h"
#include "nasshare/smbconf.h"
#include "smbconf/sections.h"
#include "smbconf/usb_permissions.h"
#include "support/linked_list.h"
#include "support/text.h"

#include <array>

using namespace nasshare;

namespace {

void mark_recycling_volume(const smb_share &share) {
  for (int volume = 0; volume < 2; ++volume) {
    if (share.recycle_enable == 1 && contains(view(share.path), SMB_VOL_NAME[volume])) {
      pss->vol_recycle[volume] = 1;
    }
  }
}

// Converts the list of the listed record in place.
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
  write_option(file, "oplocks", services.forbid_oplocks(share.path) ? "no" : view(share.oplocks));
  write_option(file, "map archive", view(share.map_archive));
  write_list(file, "read list", share.read_list);
  write_list(file, "write list", share.write_list);
  write_list(file, "invalid users", share.invalid_users);
  write_list(file, "valid users", share.valid_users);
  if (share.recycle_enable == 1) {
    write_recycle_options(file, share);
  }
}

} // namespace

bool nasshare::write_share_sections(FILE *file, const FileServices &services) {
  bool any_recycle = false;
  for (auto &share : each(*pss)) {
    if (&share != pss->head) {
      std::fprintf(file, "\n");
    }
    write_share(file, share, services);
    any_recycle = any_recycle || share.recycle_enable == 1;
  }
  return any_recycle;
}
