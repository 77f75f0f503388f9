#include "catalogue/share_xml.h"
#include "catalogue/xml_text.h"
#include "nasshare/catalogue.h"
#include "support/debug.h"
#include "support/presence.h"
#include "support/text.h"
#include "support/trouble.h"
#include "support/xml.h"
#include "volume/volume_kind.h"

using namespace nasshare;

namespace {

// What reading one volume's file has found out so far: from the first such record on, the rest of the file
// is treated as written before the volume was converted.
struct Conversion {
  bool to_mirror = false;        // a single disk became a mirror
  bool to_parity = false;        // a single disk became an array with parity
  bool mirror_to_parity = false; // a mirror became one
};

class Reader {
public:
  explicit Reader(int volume)
      : volume_(volume), kind_(pss->vol_raid_type[volume]), id_(view(pss->vol_comp_str[volume])),
        bay_serial_(view(pss->disk_serial[volume])), mount_point_(SMB_VOL_NAME[volume]) {}

  void read_item(xmlNode *item) {
    smb_share share{};
    share.volume_raid = ChildText(item, "volume_raid").number();
    read_child(item, "hd_serial", share.hd_serial);
    renumber(share);
    if (!accepts(share)) {
      note_possible_loss(item, share);
      return;
    }
    read_place(item, share);
    if (!contains(view(share.path), mount_point_)) {
      list_debug("xxxxxxxxxxxxxxxxx[%s][%d]\n", share.path, volume_);
      return;
    }
    take_configured_name(share);
    if (!retag(share)) {
      return;
    }
    read_rest(item, share);
    Insert_Smb_Node(&share);
  }

private:
  // Negative codes count as large ones.
  static bool on_single_disk(const smb_share &share) {
    return static_cast<std::uint32_t>(share.volume_raid) <= 1;
  }

  // Records of the older numbering carry 0, or on an array a code one lower than today's and a drive serial.
  void renumber(smb_share &share) const {
    if (share.volume_raid == 0) {
      share.volume_raid = single_disk;
      pss->list_changed = 1;
    } else if (!contains(view(share.hd_serial), uuid_label) &&
               is_array_device(view(pss->vol_mount_dev[volume_]))) {
      take_id(share);
      if (share.volume_raid >= single_disk && share.volume_raid <= mirroring) {
        ++share.volume_raid;
      }
    }
  }

  bool accepts(const smb_share &share) {
    auto serial = view(share.hd_serial);
    if (on_single_disk(share)) {
      if (kind_ == mirroring) {
        conversion_.to_mirror = true;
      } else if (kind_ == striping_with_parity) {
        conversion_.to_parity = true;
      }
      return conversion_.to_mirror || conversion_.to_parity || serial == id_;
    }
    if (share.volume_raid == mirroring && kind_ == striping_with_parity) {
      conversion_.mirror_to_parity = true;
      return true;
    }
    return serial == (contains(serial, uuid_label) ? id_ : bay_serial_);
  }

  // A disk or array that does not tell today which one it is may be the one that a record of this volume
  // belongs to, and what is skipped now is gone with the next store.
  void note_possible_loss(xmlNode *item, const smb_share &share) const {
    int other = 1 - volume_;
    bool of_other = pss->vol_present[other] == 1 && view(share.hd_serial) == view(pss->vol_comp_str[other]);
    if (!is_known(id_) && !of_other && contains(ChildText(item, "path").view(), mount_point_)) {
      note_missing();
    }
  }

  static bool is_known(std::string_view id) { return !id.empty() && id != uuid_label; }

  void read_place(xmlNode *item, smb_share &share) const {
    read_recovered(item, "name", share.name);
    read_recovered(item, "comment", share.comment);
    read_recovered(item, "path", share.path);
    if (on_single_disk(share)) {
      fix_path(share.path, volume_);
    }
  }

  void take_configured_name(smb_share &share) const {
    auto name = view(share.name);
    auto path = view(share.path);
    if ((name == "Volume_1" || name == "Volume_2") && (path == SMB_VOL_NAME[0] || path == SMB_VOL_NAME[1])) {
      fix_share_name(share.name, volume_);
    }
  }

  // Moves the record to the converted volume; false when its folder was not taken along.
  bool retag(smb_share &share) const {
    if (conversion_.to_mirror || conversion_.to_parity) {
      if (!is_there(share.path)) {
        return false;
      }
      tag(share, kind_);
    } else if (conversion_.mirror_to_parity) {
      tag(share, striping_with_parity);
    }
    return true;
  }

  void tag(smb_share &share, std::int32_t kind) const {
    share.volume_raid = kind;
    take_id(share);
  }

  // Stored with an identity that nobody has, the record would be nobody's.
  void take_id(smb_share &share) const {
    if (!is_known(id_)) {
      note_missing();
    }
    assign(share.hd_serial, id_);
    pss->list_changed = 1;
  }

  static void read_rest(xmlNode *item, smb_share &share) {
    read_child(item, "browseable", share.browseable);
    read_child(item, "public", share.public_);
    read_child(item, "oplocks", share.oplocks);
    read_child(item, "map_archive", share.map_archive);
    read_child_list(item, "read_list", share.read_list);
    read_child_list(item, "write_list", share.write_list);
    read_child_list(item, "invalid_users", share.invalid_users);
    share.recycle_enable = ChildText(item, "recycle_enable").number();
    share.recycle_tree = ChildText(item, "recycle_tree").number();
  }

  int volume_;
  std::int32_t kind_;
  std::string_view id_;
  std::string_view bay_serial_; // of the bay with the volume's own number, not necessarily a member
  std::string_view mount_point_;
  Conversion conversion_;
};

} // namespace

void nasshare::read_recovered(xmlNode *item, const char *name, std::span<char> field) {
  ChildText text(item, name);
  Text<list_width> content{text.view()};
  recover_ampersands(content.field());
  assign(field, view(content.field()));
}

void read_HD_xml(int volume) {
  if (volume < 0 || volume > 1) {
    return;
  }
  Text<path_width> path{view(pss->vol_hidden_path[volume]), "/.systemfile/", share_xml_name()};
  list_debug("read_HD_xml: read xml path = %s\n", path.c_str());
  if (!is_there(path.c_str())) {
    list_debug("read_HD_xml: read path not exist = %s\n", path.c_str());
    return;
  }
  auto document = load_xml(path.c_str());
  auto *samba = child_element(document ? xmlDocGetRootElement(document.get()) : nullptr, "samba");
  Reader reader(volume);
  for (auto *item = child_element(samba, "item"); item != nullptr; item = element_from(item->next)) {
    reader.read_item(item);
  }
  if (document) {
    free_xml_memory(document.release());
  }
}
