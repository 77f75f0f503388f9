#include "nasshare/catalogue.h"
#include "support/text.h"

using namespace nasshare;

void create_usb_share(void) {
  for (int slot = 0; slot < 32; ++slot) {
    if (pss->usb_exist[slot] != 1) {
      continue;
    }
    smb_share share{}; // without any list: open to everyone
    assign(share.name, view(pss->usb_share_name[slot]));
    assign(share.comment, "USB Device Share");
    assign(share.path, Text<path_width>{"/mnt/USB/", view(pss->usb_mount_name[slot])}.view());
    assign(share.browseable, "yes");
    assign(share.public_, "yes");
    assign(share.oplocks, "yes");
    assign(share.map_archive, "no");
    Insert_Smb_Node(&share);
  }
}
