// Writing the share list as share XML: <config><samba><count/><item>...</item>...</samba></config>, UTF-8.
#include "catalogue/share_xml_writer.h"

#include "base/linked_list.h"
#include "base/text.h"
#include "base/xml_store.h"
#include "catalogue/ampersands.h"
#include "catalogue/temporary_share_xml.h"
#include "model/automatic_shares.h"
#include "nasshare/catalogue.h"

#include <unistd.h>

namespace nasshare {
namespace {

void add_item(XmlComposer &file, const smb_share &share) {
  file.open("item");
  file.add_number("volume_raid", share.volume_raid);
  file.add("hd_serial", view(share.hd_serial), Form::markup);
  file.add("name", view(share.name));
  file.add("comment", view(share.comment));
  file.add("path", view(share.path));
  file.add("browseable", view(share.browseable), Form::markup);
  file.add("public", view(share.public_), Form::markup);
  file.add("oplocks", view(share.oplocks), Form::markup);
  file.add("map_archive", view(share.map_archive), Form::markup);
  file.add("read_list", view(share.read_list), Form::markup);
  file.add("write_list", view(share.write_list), Form::markup);
  file.add("invalid_users", view(share.invalid_users), Form::markup);
  file.add_number("recycle_enable", share.recycle_enable);
  file.add_number("recycle_tree", share.recycle_tree);
  file.close();
}

// False when memory is short.
bool compose_catalogue(XmlComposer &file) {
  file.open("samba");
  if (Is_Smb_Empty() == 0) {
    file.add_number("count", pss->count);
    for (const auto &share : each(*pss)) {
      add_item(file, share);
    }
  }
  return file.finish();
}

// What lies in a shared folder may be anybody's: a broken file there is not kept aside.
bool store(std::string_view text, const char *target) {
  return is_in_shared_folder(target) ? store_in_shared_folder(target, text) : store_xml(text, target);
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

int write_share_xml(XmlComposer &file, const char *target) {
  // Only the first USB disk is meant: the shares of other disks are stored, and skipped on loading: wanted.
  remove_matching(*pss, [](const smb_share &share) { return is_usb_disk_name(view(share.name)); });
  if (target == nullptr) {
    return -1;
  }
  const bool is_temporary = std::string_view(target) == temporary_share_xml;
  if (Is_Smb_Empty() != 0 && !is_temporary) {
    return 0;
  }
  const bool is_stored = compose_catalogue(file) && store(file.text(), target);
  leave_escaped();
  if (!is_stored && is_temporary) {
    unlink(target); // what an earlier program left must not be spread for this catalogue
  }
  return is_stored ? 0 : -1;
}

} // namespace nasshare

using namespace nasshare;

int create_HD_xml(const char *target) {
  XmlComposer file("config");
  return write_share_xml(file, target);
}
