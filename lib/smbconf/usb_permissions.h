// Files on a USB disk carry the owners of the machine that wrote them; the share is open to everybody.
#pragma once

namespace nasshare {

// Gives a folder below /mnt/USB, and all in it, mode 777 in the background. Other paths stay as they are.
void open_usb_permissions(const char *path);

} // namespace nasshare
