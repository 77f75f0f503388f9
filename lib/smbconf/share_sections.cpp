#include "nasshare/acl.h"
#include "nasshare/smbconf.h"
#include "smbconf/one_line.h"
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
  std::fprintf(file, "%s = %s\n", option, one_line(list).c_str());
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
  std::fprintf(file, "[ %s ]\n", one_line(view(share.name)).c_str());
  std::fprintf(file, "comment = %s\n", one_line(view(share.comment)).c_str());
  open_usb_permissions(share.path);
  std::fprintf(file, "path = %s\n", one_line(view(share.path)).c_str());
  mark_recycling_volume(share);
  std::fprintf(file, "browseable = %s\n", one_line(view(share.browseable)).c_str());
  std::fprintf(file, "public = %s\n", one_line(view(share.public_)).c_str());
  std::fprintf(file, "oplocks = %s\n",
               services.forbid_oplocks(share.path) ? "no" : one_line(view(share.oplocks)).c_str());
  std::fprintf(file, "map archive = %s\n", one_line(view(share.map_archive)).c_str());
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
