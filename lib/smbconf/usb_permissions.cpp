#include "smbconf/usb_permissions.h"

#include "nasshare/catalogue.h"
#include "smbconf/shell_escape.h"
#include "support/debug.h"
#include "support/text.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

using namespace nasshare;

void nasshare::open_usb_permissions(const char *path) {
  bool volume_root = std::ranges::find(SMB_VOL_NAME, std::string_view(path)) != std::end(SMB_VOL_NAME);
  if (volume_root || !contains(path, "/mnt/USB/") || access(path, F_OK) != 0) {
    return;
  }
  list_debug("before [%s]\n", path);
  auto escaped = shell_escaped(path); // not cut: a cut path would name another folder
  list_debug("after [%s]\n", escaped.c_str());
  Text<2 * path_width + 32> command{"chmod 777 -R ", escaped.view(), " &"};
  list_debug("chmod [%s]\n", command.c_str());
  static_cast<void>(std::system(command.c_str()));
}
