// The sections "Recycle Bin - VOLUME" of smb.conf, where users find what they have deleted.
#include "base/text.h"
#include "model/volumes.h"
#include "nasshare/smbconf.h"
#include "smbconf/option_lines.h"
#include "smbconf/recycle_folder.h"
#include "smbconf/sections.h"

namespace nasshare {
namespace {

void write_recycle_section(FILE *file, int volume) {
  std::fprintf(file, "\n");
  write_section(file, Text<2 * name_width>{"Recycle Bin - ", view(pss->vol_share_name[volume])}.view());
  std::fprintf(file, "comment = Recycle Bin Directories\n");
  const Text<path_width> folder{mount_point(volume), "/", recycle_folder};
  create_recycle_user_directory(folder.c_str());
  std::fprintf(file, "path = %s/%%u\n", folder.c_str());
  std::fprintf(file, "guest ok = yes\n");
  std::fprintf(file, "writable = yes\n");
  write_everyone(file, "valid users");
}

} // namespace

void write_recycle_sections(FILE *file) {
  for (const int volume : volumes) {
    if (is_present(*pss, volume) && pss->vol_recycle[volume] == 1) {
      write_recycle_section(file, volume);
    }
  }
}

} // namespace nasshare
