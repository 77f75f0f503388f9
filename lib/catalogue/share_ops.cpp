#include "acl/list_text.h"
#include "catalogue/hidden_folders.h"
#include "catalogue/load_catalogue.h"
#include "catalogue/share_xml.h"
#include "catalogue/store_catalogue.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "support/configuration.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/text.h"
#include "support/trouble.h"

#include <cstdlib>
#include <span>
#include <unistd.h>

using namespace nasshare;

namespace {

// A text that XML cannot hold would come back as another one; a line end would begin a line of its own in
// smb.conf; a field without a terminator has no end.
bool is_storable(std::span<const char> field) {
  auto text = view(field);
  return text.size() < field.size() && text.find_first_of("\r\n") == std::string_view::npos &&
         xml_can_hold(text);
}

// The guest is put in front of those who are denied: nobody may drop out at the end for it.
bool leaves_room_for_guest(const smb_share &share) {
  auto denied = view(share.invalid_users);
  return contains(denied, "nobody") || denied.size() + guest_entry.size() + 1 < sizeof share.invalid_users;
}

bool is_valid(const smb_share *record) {
  return record != nullptr && record->name[0] != '\0' && record->path[0] != '\0' &&
         is_storable(record->path) && access(record->path, F_OK) == 0 && is_storable(record->hd_serial) &&
         is_storable(record->name) && is_storable(record->comment) && is_storable(record->oplocks) &&
         is_storable(record->map_archive) && is_storable(record->read_list) &&
         is_storable(record->write_list) && is_storable(record->invalid_users) &&
         leaves_room_for_guest(*record);
}

// The record that a change works on. One of the loaded list is taken out of it, since the load frees that
// list.
class Argument {
public:
  explicit Argument(smb_share *record) : record_(record), listed_(unlink_node(*pss, record)) {}
  Argument(const Argument &) = delete;
  Argument &operator=(const Argument &) = delete;
  ~Argument() {
    if (listed_) {
      std::free(record_);
    }
  }

private:
  smb_share *record_;
  bool listed_;
};

// In domain mode the lists are kept as they are: they name domain accounts.
void normalise_lists(smb_share &record) {
  pss->ads_enable = configured_number("/system_mgr/samba/ads_enable");
  if (pss->ads_enable != 1) {
    pss->ads_enable = 0;
    rebuld_input_data(&record);
  }
}

// Tags the record with the volume that holds its path; on neither volume it keeps the caller's tags. False
// then.
bool place(smb_share &record) {
  for (int volume = 0; volume < 2; ++volume) {
    if (view(record.path).starts_with(SMB_VOL_NAME[volume])) {
      record.volume_raid = pss->vol_raid_type[volume];
      assign(record.hd_serial, view(pss->vol_comp_str[volume]));
      return true;
    }
  }
  return false;
}

int refuse() {
  Free_All_List();
  return 0;
}

} // namespace

int add_share(smb_share *record) {
  if (!is_valid(record)) {
    auto path = record == nullptr ? std::string_view() : view(record->path); // perhaps without a terminator
    list_debug("input data error! [%.*s]\n", static_cast<int>(path.size()), path.data());
    return 0;
  }
  load_begins();
  const Argument argument(record);
  ProgramLock lock(catalogue_lock);
  normalise_lists(*record);
  list_debug("read_list       : [%s]\n", record->read_list);
  list_debug("write_list      : [%s]\n", record->write_list);
  list_debug("invalid_users   : [%s]\n", record->invalid_users);

  load_catalogue();
  if (check_smb_share_name(record->name) != nullptr) {
    return refuse();
  }
  if (place(*record)) {
    list_debug("####p->hd_serial [%s]\n", record->hd_serial);
  }
  // A drive may report a serial number that no file gives back.
  if (!xml_can_hold(record->hd_serial) || Insert_Smb_Node(record) == nullptr) {
    return refuse();
  }
  return store_catalogue(Print::list, lock);
}

int mod_share(smb_share *record) {
  if (!is_valid(record)) {
    list_debug("input data error!\n");
    return 0;
  }
  load_begins();
  const Argument argument(record);
  ProgramLock lock(catalogue_lock);
  normalise_lists(*record);

  load_catalogue();
  if (check_smb_share_name(record->name) == nullptr) {
    return refuse();
  }
  place(*record);
  if (!xml_can_hold(record->hd_serial)) {
    return refuse();
  }
  Modify_Smb_Node(record);
  return store_catalogue(Print::nothing, lock);
}

int del_share(const char *name) {
  if (!given(name)) {
    return 0;
  }
  load_begins();
  ProgramLock lock(catalogue_lock);
  const Text<2 * name_width> wanted{name}; // it may lie in the very list that the load empties
  load_catalogue();
  if (check_smb_share_name(wanted.c_str()) == nullptr) {
    list_debug("not find %s\n", wanted.c_str());
    return refuse();
  }
  Remove_Smb_Node_By_Name(wanted.c_str());
  return store_catalogue(Print::nothing, lock);
}

int nasshare::store_catalogue(Print print, ProgramLock &lock) {
  bool written = !load_was_troubled() && create_HD_xml(temporary_share_xml) == 0;
  if (print == Print::list) {
    List_Smb_Node();
  }
  Free_All_List();
  if (!written) {
    return 0;
  }
  bool spread = spread_catalogue();
  unlink(temporary_share_xml);
  if (!spread) {
    return 0;
  }
  sync();
  lock.release();
  run_smbcom();
  return 1;
}
