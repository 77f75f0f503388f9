// Which records of a share XML file are a volume's own. The file holds the records of all volumes, perhaps
// from before the current numbering of volume kinds, or from before the volume became an array.
#pragma once

#include "nasshare/catalogue.h"

#include <cstdint>
#include <string_view>

namespace nasshare {

// Judges the records of one volume's file, in their order.
class RecordAdoption {
public:
  explicit RecordAdoption(int volume);

  // Brings the record's tags (volume_raid, hd_serial) up to today's numbering.
  void renumber_or_note(smb_share &record) const;

  // Whether the record, renumbered, is the volume's own.
  [[nodiscard]] bool accepts(const smb_share &record);

  // What becomes of a record that is not accepted. The record's path is where it would be on the volume, the
  // other one as the file has it.
  void refuse(const smb_share &record, std::string_view stored_path);

  // Whether one of those may be the volume's own all the same, since the volume does not tell today which one
  // it is. What is skipped now is gone with the next store. A disk that can never be asked is known by that:
  // then some of its records say so, and those that lay elsewhere are not its own.
  [[nodiscard]] bool may_have_refused_own() const;

  // Tags an accepted record of a converted volume as what the volume is now; false when its folder was not
  // taken along.
  [[nodiscard]] bool retag_or_note(smb_share &record) const;

  // Whether the record was tagged as a single disk's. Negative codes count as large ones: wanted.
  static bool is_of_single_disk(const smb_share &record);

private:
  [[nodiscard]] bool is_own(const smb_share &record);
  [[nodiscard]] bool is_of_other_volume(const smb_share &record) const;
  void tag_or_note(smb_share &record, std::int32_t kind) const;
  void take_identity_or_note(smb_share &record) const;

  int volume_;
  std::int32_t kind_;
  std::string_view identity_;
  std::string_view
      bay_serial_; // of the bay with the volume's own number, which need not hold a member: wanted

  // What has been found out so far: from the first such record on, the rest of the file is treated as written
  // before the volume was converted.
  bool to_mirror_ = false;        // a single disk became a mirror
  bool to_parity_ = false;        // a single disk became an array with parity
  bool mirror_to_parity_ = false; // a mirror became one
  bool has_accepted_ = false;
  bool has_refused_near_ = false; // a record that would lie on the volume
  bool has_refused_here_ = false; // one that says so itself
};

} // namespace nasshare
