// The shares of mounted ISO images: ".iso_mount.xml" in the system folder of each volume's hidden partition,
// ".iso_mount_ads.xml" in domain mode.
#include "base/debug.h"
#include "base/presence.h"
#include "base/text.h"
#include "catalogue/share_xml.h"
#include "model/domain_mode.h"
#include "model/load_verdict.h"
#include "model/system_file.h"
#include "model/volume_identity.h"
#include "model/volume_kind.h"
#include "model/volumes.h"
#include "nasshare/special.h"

namespace nasshare {
namespace {

enum class Verdict { skip, check_mount, accept };

// Which records of one volume's file are the volume's own. They are judged by rules of their own, other than
// shares are.
class ImageAdoption {
public:
  explicit ImageAdoption(int volume)
      : kind_(pss->vol_raid_type[volume]), identity_(view(pss->vol_comp_str[volume])) {}

  Verdict judge(const smb_share &share) {
    list_debug("p->volume_raid = %d\n", share.volume_raid);
    list_debug("current_raid_type = %d\n", kind_);
    return share.volume_raid == single_disk ? judge_single_disk(share) : judge_array(share);
  }

  // Tags an accepted record of a converted volume as what the volume is now; false when its image is not
  // mounted.
  [[nodiscard]] bool retag_or_note(smb_share &share, Verdict verdict) const {
    if (verdict == Verdict::check_mount) {
      if (!exists_or_note(share.path)) {
        return false;
      }
      tag(share, mirroring);
    }
    if (to_parity_) {
      tag(share, striping_with_parity);
    }
    return true;
  }

private:
  Verdict judge_single_disk(const smb_share &share) {
    to_mirror_ = to_mirror_ || kind_ == mirroring;
    if (to_mirror_) {
      return Verdict::check_mount;
    }
    if (view(share.hd_serial) == identity_) {
      return Verdict::accept;
    }
    // The marks are wanted: scripts look for them.
    list_debug("###file serial = %s\n", share.hd_serial);
    list_debug("###hd serial = %s\n", Text<name_width>{identity_}.c_str());
    return Verdict::skip;
  }

  // A plain drive serial is not compared: wanted.
  Verdict judge_array(const smb_share &share) {
    const auto serial = view(share.hd_serial);
    if (share.volume_raid == mirroring && kind_ == striping_with_parity) {
      to_parity_ = true;
    } else if (is_array_identity(serial) && serial != identity_) {
      return Verdict::skip;
    }
    return to_mirror_ ? Verdict::check_mount : Verdict::accept;
  }

  void tag(smb_share &share, std::int32_t kind) const {
    share.volume_raid = kind;
    assign(share.hd_serial, identity_);
    pss->list_changed = 1;
  }

  std::int32_t kind_;
  std::string_view identity_;
  // Once set, each stays set for the rest of the file: it was written before the volume was converted.
  bool to_mirror_ = false;
  bool to_parity_ = false;
};

void insert_share(xmlNode *item, smb_share &share) {
  read_list(item, "read_list", share.read_list);
  read_denied_or_note(item, share.invalid_users);
  assign(share.browseable, "yes");
  assign(share.public_, "yes");
  assign(share.oplocks, "yes");
  assign(share.map_archive, "no");
  Insert_Smb_Node(&share);
}

void read_item(xmlNode *item, ImageAdoption &adoption) {
  smb_share share{};
  share.volume_raid = ChildText(item, "volume_raid").number();
  read_child(item, "hd_serial", share.hd_serial);
  const auto verdict = adoption.judge(share);
  if (verdict == Verdict::skip) {
    return;
  }
  read_recovered(item, "name", share.name);
  read_recovered(item, "comment", share.comment);
  read_recovered(item, "mount_path", share.path);
  if (adoption.retag_or_note(share, verdict)) {
    insert_share(item, share);
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void create_iso_share(void) {
  for (const int volume : volumes) {
    if (is_present(*pss, volume)) {
      isoMount_readXml(volume);
    }
  }
}

void isoMount_readXml(int volume) {
  if (!is_volume(volume)) {
    return;
  }
  const LoadWatch watch;
  const auto *const name = is_domain_mode() ? ".iso_mount_ads.xml" : ".iso_mount.xml";
  const auto path = system_file(view(pss->vol_hidden_path[volume]), name);
  list_debug("read xml path = %s\n", path.c_str());
  if (!has_hidden_partition(*pss, volume)) {
    return;
  }
  auto document = load_or_note(path.c_str());
  auto *const root = root_of(document);
  auto *const images = root == nullptr ? nullptr : element_from(root->children);
  ImageAdoption adoption(volume);
  for (auto *item = child_element(images, "item"); item != nullptr; item = element_from(item->next)) {
    read_item(item, adoption);
  }
  if (document) {
    free_xml_memory(document.release());
  }
}
