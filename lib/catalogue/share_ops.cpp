// Adding, modifying and deleting a share: check, load, place, insert, store.
#include "base/argument.h"
#include "base/debug.h"
#include "base/linked_list.h"
#include "base/watch.h"
#include "catalogue/loading.h"
#include "catalogue/share_name_fix.h"
#include "catalogue/storable_record.h"
#include "catalogue/storing.h"
#include "model/domain_mode.h"
#include "model/volume_identity.h"
#include "model/volumes.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <optional>

namespace nasshare {
namespace {

// The record that a change works on. One that is listed is taken out of the list, which the load is about to
// free.
class RecordArgument {
public:
  explicit RecordArgument(smb_share *record) : listed_(unlink_node(*pss, record) ? record : nullptr) {}

private:
  Allocated<smb_share> listed_; // freed at the end, as the load would have done
};

// In domain mode the lists are kept as they are: they name domain accounts.
void normalise_lists_or_note(smb_share &record) {
  read_domain_mode_or_note();
  if (!is_domain_mode()) {
    rebuld_input_data(&record);
  }
}

std::optional<int> volume_of(const smb_share &record) {
  const auto holds = [&record](int volume) { return begins_on_volume(view(record.path), volume); };
  const auto *const found = std::ranges::find_if(volumes, holds);
  return found == volumes.end() ? std::nullopt : std::optional(*found);
}

// Tags the record with the volume that holds its path; on neither volume it keeps the caller's tags, and the
// answer is false.
bool place_on_volume(smb_share &record) {
  const auto volume = volume_of(record);
  if (volume) {
    record.volume_raid = pss->vol_raid_type[*volume];
    assign(record.hd_serial, view(pss->vol_comp_str[*volume]));
  }
  return volume.has_value();
}

// Judged where the record ends up: a drive too may report a serial number that no file gives back.
bool comes_back(const smb_share &record) {
  const auto volume = volume_of(record);
  return volume ? is_storable_identity(record.hd_serial) && !comes_back_as_another(record, *volume)
                : is_storable(record.hd_serial);
}

// A disk without any serial number is known by having none.
bool is_unknown_for_now(int volume) {
  return !is_known_identity(view(pss->vol_comp_str[volume])) && !has_told_identity(volume);
}

// A share that moves is stored where it goes to before it is taken from where it was: one that is listed
// twice is shown once, and one that is listed nowhere would be lost with a kill in between.
int first_volume_of_move(const smb_share &from, const smb_share &to) {
  return volume_of(from) == volume_of(to) ? no_volume_first : volume_of(to).value_or(no_volume_first);
}

void list_input_error(const smb_share *record) {
  const auto path =
      record == nullptr ? std::string_view() : view(record->path); // perhaps without a terminator
  list_debug("input data error! [%.*s]\n", static_cast<int>(path.size()), path.data());
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int add_share(smb_share *record) {
  if (!is_storable(record)) {
    list_input_error(record);
    return 0;
  }
  const Watch change;
  const RecordArgument argument(record);
  ProgramLock lock(catalogue_lock);
  normalise_lists_or_note(*record);
  list_debug("read_list       : [%s]\n", record->read_list);
  list_debug("write_list      : [%s]\n", record->write_list);
  list_debug("invalid_users   : [%s]\n", record->invalid_users);

  load_catalogue_or_note();
  if (check_smb_share_name(record->name) != nullptr) {
    return refuse_change();
  }
  if (place_on_volume(*record)) {
    list_debug("####p->hd_serial [%s]\n", record->hd_serial); // wanted: scripts look for it
  }
  if (!comes_back(*record) || Insert_Smb_Node(record) == nullptr) {
    return refuse_change();
  }
  return store_catalogue(change, lock, {.listing = Listing::yes});
}

int mod_share(smb_share *record) {
  if (!is_storable(record)) {
    list_debug("input data error!\n");
    return 0;
  }
  const Watch change;
  const RecordArgument argument(record);
  ProgramLock lock(catalogue_lock);
  normalise_lists_or_note(*record);

  load_catalogue_or_note();
  const auto *const listed = check_smb_share_name(record->name);
  if (listed == nullptr) {
    return refuse_change();
  }
  const int first_volume = first_volume_of_move(*listed, *record);
  if (is_volume(first_volume) && is_unknown_for_now(first_volume)) {
    return refuse_change(); // stored for a volume that nobody knows again, the share would be lost
  }
  place_on_volume(*record);
  if (!comes_back(*record)) {
    return refuse_change();
  }
  Modify_Smb_Node(record);
  return store_catalogue(change, lock, {.first_volume = first_volume});
}

int del_share(const char *name) {
  if (!is_given(name)) {
    return 0;
  }
  const Watch change;
  ProgramLock lock(catalogue_lock);
  const Argument wanted(name);
  load_catalogue_or_note();
  if (check_smb_share_name(wanted.c_str()) == nullptr) {
    list_debug("not find %s\n", wanted.c_str());
    return refuse_change();
  }
  Remove_Smb_Node_By_Name(wanted.c_str());
  return store_catalogue(change, lock);
}
