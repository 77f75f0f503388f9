// Which records of a share XML file are a volume's own, and how those from before a conversion are tagged
// anew.
#include "catalogue/record_adoption.h"

#include "base/presence.h"
#include "base/text.h"
#include "model/volume_identity.h"
#include "model/volume_kind.h"
#include "model/volumes.h"

namespace nasshare {

RecordAdoption::RecordAdoption(int volume)
    : volume_(volume), kind_(pss->vol_raid_type[volume]), identity_(view(pss->vol_comp_str[volume])),
      bay_serial_(view(pss->disk_serial[volume])) {}

bool RecordAdoption::is_of_single_disk(const smb_share &record) {
  return static_cast<std::uint32_t>(record.volume_raid) <= single_disk;
}

// Records of the older numbering carry 0, or on an array a code one lower than today's and a drive serial.
void RecordAdoption::renumber_or_note(smb_share &record) const {
  if (record.volume_raid == unknown_kind) {
    record.volume_raid = single_disk;
    pss->list_changed = 1;
  } else if (!is_array_identity(view(record.hd_serial)) &&
             is_array_device(view(pss->vol_mount_dev[volume_]))) {
    take_identity_or_note(record);
    if (record.volume_raid >= single_disk && record.volume_raid <= mirroring) {
      ++record.volume_raid;
    }
  }
}

bool RecordAdoption::accepts(const smb_share &record) {
  const bool is_accepted = is_own(record);
  has_accepted_ = has_accepted_ || is_accepted;
  return is_accepted;
}

bool RecordAdoption::is_own(const smb_share &record) {
  const auto serial = view(record.hd_serial);
  if (is_of_single_disk(record)) {
    to_mirror_ = to_mirror_ || kind_ == mirroring;
    to_parity_ = to_parity_ || kind_ == striping_with_parity;
    return to_mirror_ || to_parity_ || serial == identity_;
  }
  if (record.volume_raid == mirroring && kind_ == striping_with_parity) {
    mirror_to_parity_ = true;
    return true;
  }
  return serial == (is_array_identity(serial) ? identity_ : bay_serial_);
}

bool RecordAdoption::is_of_other_volume(const smb_share &record) const {
  const int other = 1 - volume_;
  return is_present(*pss, other) && view(record.hd_serial) == view(pss->vol_comp_str[other]);
}

void RecordAdoption::refuse(const smb_share &record, std::string_view stored_path) {
  if (!is_of_other_volume(record)) {
    has_refused_near_ = has_refused_near_ || mentions_volume(view(record.path), volume_);
    has_refused_here_ = has_refused_here_ || mentions_volume(stored_path, volume_);
  }
}

bool RecordAdoption::may_have_refused_own() const {
  if (has_told_identity(volume_)) {
    return false;
  }
  if (identity_ == unasked_serial) {
    return has_refused_here_ && !has_accepted_;
  }
  // Where some records are the volume's as they are, the disk was not moved since they were written.
  return has_accepted_ ? has_refused_here_ : has_refused_near_;
}

bool RecordAdoption::retag_or_note(smb_share &record) const {
  if (to_mirror_ || to_parity_) {
    if (!exists_or_note(record.path)) {
      return false;
    }
    tag_or_note(record, kind_);
  } else if (mirror_to_parity_) {
    tag_or_note(record, striping_with_parity);
  }
  return true;
}

void RecordAdoption::tag_or_note(smb_share &record, std::int32_t kind) const {
  record.volume_raid = kind;
  take_identity_or_note(record);
}

// Stored with an identity that nobody has, the record would be nobody's.
void RecordAdoption::take_identity_or_note(smb_share &record) const {
  if (!is_known_identity(identity_)) {
    note_lack();
  }
  assign(record.hd_serial, identity_);
  pss->list_changed = 1;
}

} // namespace nasshare
