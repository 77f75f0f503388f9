// Files on a USB disk carry the owners of the machine that wrote them; the share is open to everybody.
#include "smbconf/usb_permissions.h"

#include "base/debug.h"
#include "base/shell_escape.h"
#include "base/text.h"
#include "model/usb_slot.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace nasshare {

void open_usb_permissions(const char *path) {
  const bool is_volume_root =
      std::ranges::find(SMB_VOL_NAME, std::string_view(path)) != std::end(SMB_VOL_NAME);
  if (is_volume_root || !contains(path, usb_root) || access(path, F_OK) != 0) {
    return;
  }
  list_debug("before [%s]\n", path);
  const auto escaped = shell_escaped(path); // not cut: a cut path would name another folder
  list_debug("after [%s]\n", escaped.c_str());
  const Text<2 * path_width + 32> command{"chmod 777 -R ", escaped.view(), " &"};
  list_debug("chmod [%s]\n", command.c_str());
  static_cast<void>(std::system(command.c_str())); // what does not work shows on the share
}

} // namespace nasshare
