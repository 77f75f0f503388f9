#include "acl/list_text.h"
#include "nasshare/acl.h"

using namespace nasshare;

namespace {

void write_valid_users(smb_share &share) {
  auto readers = view(share.read_list);
  auto writers = view(share.write_list);
  if (readers.empty() && writers.empty()) {
    assign(share.valid_users, guest_entry);
    return;
  }
  auto comma = readers.empty() || writers.empty() ? "" : ",";
  assign_list(share.valid_users, Text<2 * list_width>{readers, comma, writers}.view());
}

// Anything that contains "nobody" counts as naming the guest.
void deny_guest(smb_share &share) {
  auto denied = view(share.invalid_users);
  if (!contains(denied, "nobody")) {
    assign_list(share.invalid_users, Text<2 * list_width>{guest_entry, ",", denied}.view());
  }
}

} // namespace

void rw_list_rule(smb_share *record) {
  if (record == nullptr) {
    return;
  }
  auto readers = view(record->read_list);
  auto writers = view(record->write_list);
  bool denies = record->invalid_users[0] != '\0';

  if (readers.empty() && writers.empty() && !denies) {
    assign(record->write_list, everyone);
    assign(record->valid_users, everyone);
    return;
  }
  bool open = readers == everyone || writers == everyone;
  if (open) {
    assign(record->valid_users, everyone);
  } else {
    write_valid_users(*record);
  }
  if (denies) {
    deny_guest(*record);
  } else if (!open) {
    assign(record->invalid_users, guest_entry);
  }
}
