// Writing the share list as share XML: <config><samba><count/><item>...</item>...</samba></config>, UTF-8.
#include "base/linked_list.h"
#include "base/text.h"
#include "base/xml_reader.h"
#include "base/xml_store.h"
#include "base/xml_writer.h"
#include "catalogue/ampersands.h"
#include "catalogue/temporary_share_xml.h"
#include "model/automatic_shares.h"
#include "nasshare/catalogue.h"

#include <unistd.h>

namespace nasshare {
namespace {

bool add_item(xmlNode *samba, const smb_share &share) {
  auto *const item = add_element(samba, "item");
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
  return add_number(samba, "count", pss->count) &&
         std::ranges::all_of(each(*pss), [samba](const auto &share) { return add_item(samba, share); });
}

XmlDocument compose_catalogue() {
  auto document = new_xml_or_note("config");
  auto *const samba = document ? add_element(root_of(document), "samba") : nullptr;
  return samba != nullptr && add_shares(samba) ? std::move(document) : nullptr;
}

bool store(xmlDoc *document, const char *target) {
  if (!is_in_shared_folder(target)) {
    return store_xml(document, target);
  }
  // What lies in a shared folder may be anybody's: a broken file there is not kept aside.
  const auto text = compose_whole(document);
  return text && store_in_shared_folder(target, view(text));
}

// In memory the texts stay as the file has them.
void leave_escaped() {
  for (auto &share : each(*pss)) {
    escape_ampersands(share.name);
    escape_ampersands(share.comment);
    escape_ampersands(share.path);
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int create_HD_xml(const char *target) {
  // Only the first USB disk is meant: the shares of other disks are stored, and skipped on loading: wanted.
  remove_matching(*pss, [](const smb_share &share) { return is_usb_disk_name(view(share.name)); });
  if (target == nullptr) {
    return -1;
  }
  const bool is_temporary = std::string_view(target) == temporary_share_xml;
  if (Is_Smb_Empty() != 0 && !is_temporary) {
    return 0;
  }
  const auto document = compose_catalogue();
  const bool is_stored = document && store(document.get(), target);
  leave_escaped();
  if (!is_stored && is_temporary) {
    unlink(target); // what an earlier program left must not be spread for this catalogue
  }
  return is_stored ? 0 : -1;
}
