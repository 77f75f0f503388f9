// The section "printers" of smb.conf: the spool lies on the first hidden system partition.
#include "base/watch.h"
#include "catalogue/hidden_folders.h"
#include "nasshare/smbconf.h"
#include "smbconf/option_lines.h"

#include <cstdio>
#include <unistd.h>

using namespace nasshare;

void determine_printer_in_hidden(FILE *file) {
  if (file == nullptr) {
    return;
  }
  const HiddenFolders folders;
  if (folders.error() != 0) {
    note_file_error(folders.error()); // shares are served without printers all the same
  }
  for (std::size_t i = 0; i < folders.size(); ++i) {
    const auto folder = folders[i];
    if (access(folder.c_str(), F_OK) == 0) {
      write_section(file, "printers");
      std::fprintf(file,
                   "path = %s/.lpd\nguest ok = yes\nprintable = yes\nuse client driver = yes\n"
                   "browseable = no\n\n",
                   folder.c_str());
      return;
    }
  }
}
