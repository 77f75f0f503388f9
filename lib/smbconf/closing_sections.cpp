#include "nasshare/smbconf.h"
#include "smbconf/sections.h"
#include "support/text.h"

using namespace nasshare;

void nasshare::write_everyone(FILE *file, const char *option) {
  if (pss->ads_enable == 1) {
    write_option(file, option,
                 Text<2 * name_width>{"\"nobody\",\"+", view(pss->ads_workgroup), "+Domain Users\""}.view());
  } else {
    write_option(file, option, "\"nobody\",\"@allaccount\"");
  }
}

void nasshare::write_recycle_sections(FILE *file) {
  for (int volume = 0; volume < 2; ++volume) {
    if (pss->vol_present[volume] != 1 || pss->vol_recycle[volume] != 1) {
      continue;
    }
    std::fprintf(file, "\n");
    write_section(file, Text<2 * name_width>{"Recycle Bin - ", view(pss->vol_share_name[volume])}.view());
    std::fprintf(file, "comment = Recycle Bin Directories\n");
    Text<path_width> folder{SMB_VOL_NAME[volume], "/", recycle_folder};
    create_recycle_user_directory(folder.c_str());
    std::fprintf(file, "path = %s/%%u\n", folder.c_str());
    std::fprintf(file, "guest ok = yes\n");
    std::fprintf(file, "writable = yes\n");
    write_everyone(file, "valid users");
  }
}

void nasshare::write_dfs_section(FILE *file) {
  std::fprintf(file, "\n[ %s ]\n", "DFS");
  std::fprintf(file, "comment = Samba MSDFS Server\n");
  std::fprintf(file, "path = %s\n", "/etc/dfsroot");
  std::fprintf(file, "browseable = yes\n");
  std::fprintf(file, "public = yes\n");
  std::fprintf(file, "read list =\n");
  write_everyone(file, "write list");
  std::fprintf(file, "invalid users =\n");
  write_everyone(file, "valid users");
  std::fprintf(file, "msdfs root = yes\n");
}
