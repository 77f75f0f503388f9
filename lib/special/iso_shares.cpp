#include "catalogue/share_xml.h"
#include "nasshare/catalogue.h"
#include "nasshare/special.h"
#include "support/debug.h"
#include "support/presence.h"
#include "support/text.h"
#include "support/xml.h"
#include "volume/volume_kind.h"

using namespace nasshare;

namespace {

enum class Verdict { skip, check_mount, accept };

class Reader {
public:
  explicit Reader(int volume) : kind_(pss->vol_raid_type[volume]), id_(view(pss->vol_comp_str[volume])) {}

  void read_item(xmlNode *item) {
    smb_share share{};
    share.volume_raid = ChildText(item, "volume_raid").number();
    read_child(item, "hd_serial", share.hd_serial);
    list_debug("p->volume_raid = %d\n", share.volume_raid);
    list_debug("current_raid_type = %d\n", kind_);

    auto verdict = judge(share);
    if (verdict == Verdict::skip) {
      return;
    }
    read_recovered(item, "name", share.name);
    read_recovered(item, "comment", share.comment);
    read_recovered(item, "mount_path", share.path);
    if (verdict == Verdict::check_mount) {
      if (!is_there(share.path)) {
        return;
      }
      tag(share, mirroring);
    }
    if (to_parity_) {
      tag(share, striping_with_parity);
    }
    insert(item, share);
  }

private:
  Verdict judge(const smb_share &share) {
    return share.volume_raid == single_disk ? judge_single_disk(share) : judge_array(share);
  }

  Verdict judge_single_disk(const smb_share &share) {
    if (kind_ == mirroring) {
      to_mirror_ = true;
    }
    if (to_mirror_) {
      return Verdict::check_mount;
    }
    if (view(share.hd_serial) == id_) {
      return Verdict::accept;
    }
    list_debug("###file serial = %s\n", share.hd_serial);
    list_debug("###hd serial = %s\n", Text<name_width>{id_}.c_str());
    return Verdict::skip;
  }

  // A plain drive serial is not compared.
  Verdict judge_array(const smb_share &share) {
    auto serial = view(share.hd_serial);
    if (share.volume_raid == mirroring && kind_ == striping_with_parity) {
      to_parity_ = true;
    } else if (contains(serial, uuid_label) && serial != id_) {
      return Verdict::skip;
    }
    return to_mirror_ ? Verdict::check_mount : Verdict::accept;
  }

  void tag(smb_share &share, std::int32_t kind) const {
    share.volume_raid = kind;
    assign(share.hd_serial, id_);
    pss->list_changed = 1;
  }

  static void insert(xmlNode *item, smb_share &share) {
    read_child_list(item, "read_list", share.read_list);
    read_child_list(item, "invalid_users", share.invalid_users);
    assign(share.browseable, "yes");
    assign(share.public_, "yes");
    assign(share.oplocks, "yes");
    assign(share.map_archive, "no");
    Insert_Smb_Node(&share);
  }

  std::int32_t kind_;
  std::string_view id_;
  // Once set, each stays set for the rest of the file: it was written before the volume was converted.
  bool to_mirror_ = false;
  bool to_parity_ = false;
};

} // namespace

void create_iso_share(void) {
  for (int volume = 0; volume < 2; ++volume) {
    if (pss->vol_present[volume] == 1) {
      isoMount_readXml(volume);
    }
  }
}

void isoMount_readXml(int volume) {
  if (volume < 0 || volume > 1) {
    return;
  }
  auto name = pss->ads_enable == 1 ? ".iso_mount_ads.xml" : ".iso_mount.xml";
  Text<path_width> path{view(pss->vol_hidden_path[volume]), "/.systemfile/", name};
  list_debug("read xml path = %s\n", path.c_str());
  auto document = load_xml(path.c_str());
  auto *root = document ? xmlDocGetRootElement(document.get()) : nullptr;
  auto *images = root == nullptr ? nullptr : element_from(root->children);
  Reader reader(volume);
  for (auto *item = child_element(images, "item"); item != nullptr; item = element_from(item->next)) {
    reader.read_item(item);
  }
  if (document) {
    free_xml_memory(document.release());
  }
}
