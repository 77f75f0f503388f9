// Each mounted USB disk is a share, open to everyone.
#include "base/text.h"
#include "model/load_verdict.h"
#include "model/usb_slot.h"
#include "model/volumes.h"
#include "nasshare/catalogue.h"

namespace nasshare {
namespace {

void insert_share(int slot) {
  smb_share share{}; // without any list: open to everyone
  assign(share.name, view(pss->usb_share_name[slot]));
  assign(share.comment, "USB Device Share");
  assign(share.path, Text<path_width>{usb_root, view(pss->usb_mount_name[slot])}.view());
  assign(share.browseable, "yes");
  assign(share.public_, "yes");
  assign(share.oplocks, "yes");
  assign(share.map_archive, "no");
  Insert_Smb_Node(&share);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void create_usb_share(void) {
  const LoadWatch watch;
  for (const int slot : usb_slots) {
    if (is_mounted_usb(*pss, slot)) {
      insert_share(slot);
    }
  }
}
