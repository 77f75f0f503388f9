// Reading one volume's share XML: ".smb.xml" in the system folder of its hidden partition, ".smb_ads.xml" in
// domain mode.
#include "base/debug.h"
#include "base/presence.h"
#include "base/text.h"
#include "catalogue/listed_names.h"
#include "catalogue/record_adoption.h"
#include "catalogue/share_name_fix.h"
#include "catalogue/share_xml.h"
#include "model/load_verdict.h"
#include "model/system_file.h"
#include "model/volumes.h"

namespace nasshare {
namespace {

void read_place(xmlNode *item, int volume, smb_share &share) {
  read_recovered(item, "name", share.name);
  read_recovered(item, "comment", share.comment);
  read_recovered(item, "path", share.path);
  if (RecordAdoption::is_of_single_disk(share)) {
    fix_path(share.path, volume);
  }
}

void read_options(xmlNode *item, smb_share &share) {
  read_child(item, "browseable", share.browseable);
  read_child(item, "public", share.public_);
  read_child(item, "oplocks", share.oplocks);
  read_child(item, "map_archive", share.map_archive);
  read_list(item, "read_list", share.read_list);
  read_list(item, "write_list", share.write_list);
  read_denied_or_note(item, share.invalid_users);
  share.recycle_enable = ChildText(item, "recycle_enable").number();
  share.recycle_tree = ChildText(item, "recycle_tree").number();
}

// One record serves all items: every field that a file gives is set anew.
void read_item(xmlNode *item, int volume, RecordAdoption &adoption, ListedNames &listed, smb_share &share) {
  share.volume_raid = ChildText(item, "volume_raid").number();
  read_child(item, "hd_serial", share.hd_serial);
  adoption.renumber_or_note(share);
  const bool is_accepted = adoption.accepts(share);
  read_place(item, volume, share);
  if (!is_accepted) {
    adoption.refuse(share, ChildText(item, "path").view());
    return;
  }
  if (!mentions_volume(view(share.path), volume)) {
    list_debug("xxxxxxxxxxxxxxxxx[%s][%d]\n", share.path, volume); // wanted: scripts look for it
    return;
  }
  take_configured_name(share.name, view(share.path), volume);
  if (adoption.retag_or_note(share)) {
    read_options(item, share);
    listed.insert_share_or_note(share);
  }
}

} // namespace

void read_share_xml_or_note(ShareXmlFiles &files, const char *path, int volume) {
  RecordAdoption adoption(volume);
  ListedNames listed;
  smb_share share{};
  for (auto *item = child_element(files.read_or_note(path), "item"); item != nullptr;
       item = element_from(item->next)) {
    read_item(item, volume, adoption, listed, share);
  }
  if (adoption.may_have_refused_own()) {
    note_lack();
  }
}

void read_volume_or_note(ShareXmlFiles &files, int volume) {
  const auto path = system_file(view(pss->vol_hidden_path[volume]), share_xml_name());
  list_debug("read_HD_xml: read xml path = %s\n", path.c_str());
  if (!has_hidden_partition(*pss, volume) || !exists_or_note(path.c_str())) {
    list_debug("read_HD_xml: read path not exist = %s\n", path.c_str());
    return;
  }
  read_share_xml_or_note(files, path.c_str(), volume);
}

} // namespace nasshare

using namespace nasshare;

void read_HD_xml(int volume) {
  if (is_volume(volume)) {
    const LoadWatch watch;
    ShareXmlFiles files;
    read_volume_or_note(files, volume);
  }
}
