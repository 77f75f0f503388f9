#include "catalogue/share_xml.h"
#include "catalogue/xml_text.h"
#include "nasshare/catalogue.h"
#include "support/linked_list.h"
#include "support/text.h"
#include "support/xml.h"

#include <unistd.h>

using namespace nasshare;

namespace {

// Only the disk in the first slot is meant: the shares of other slots are stored, and skipped on loading.
bool is_usb_disk_share(const smb_share &share) {
  return contains(view(share.name), "USBDisk1");
}

bool add_item(xmlNode *samba, const smb_share &share) {
  auto *item = add_element(samba, "item");
  return item != nullptr && add_number(item, "volume_raid", share.volume_raid) &&
         add_markup(item, "hd_serial", view(share.hd_serial)) && add_text(item, "name", view(share.name)) &&
         add_text(item, "comment", view(share.comment)) && add_text(item, "path", view(share.path)) &&
         add_markup(item, "browseable", view(share.browseable)) &&
         add_markup(item, "public", view(share.public_)) &&
         add_markup(item, "oplocks", view(share.oplocks)) &&
         add_markup(item, "map_archive", view(share.map_archive)) &&
         add_markup(item, "read_list", view(share.read_list)) &&
         add_markup(item, "write_list", view(share.write_list)) &&
         add_markup(item, "invalid_users", view(share.invalid_users)) &&
         add_number(item, "recycle_enable", share.recycle_enable) &&
         add_number(item, "recycle_tree", share.recycle_tree);
}

bool add_shares(xmlNode *samba) {
  if (Is_Smb_Empty() != 0) {
    return true;
  }
  if (!add_number(samba, "count", pss->count)) {
    return false;
  }
  for (const auto &share : each(*pss)) {
    if (!add_item(samba, share)) {
      return false;
    }
  }
  return true;
}

void leave_escaped() {
  for (auto &share : each(*pss)) {
    escape_ampersands(share.name);
    escape_ampersands(share.comment);
    escape_ampersands(share.path);
  }
}

bool write_catalogue(const char *target) {
  auto document = new_xml("config");
  auto *samba = document ? add_element(xmlDocGetRootElement(document.get()), "samba") : nullptr;
  return samba != nullptr && add_shares(samba) && store_xml(document.get(), target);
}

} // namespace

int create_HD_xml(const char *target) {
  remove_matching(*pss, is_usb_disk_share);
  bool temporary = target != nullptr && std::string_view(target) == temporary_share_xml;
  if (target == nullptr) {
    return -1;
  }
  if (Is_Smb_Empty() != 0 && !temporary) {
    return 0;
  }
  bool stored = write_catalogue(target);
  leave_escaped();
  if (!stored && temporary) {
    unlink(target); // what an earlier program left must not be spread for this catalogue
  }
  return stored ? 0 : -1;
}
