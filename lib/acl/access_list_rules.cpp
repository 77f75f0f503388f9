// The rules between a share's lists: whom an empty one lets in, who the valid users are, and that guests are
// denied wherever not everyone is let in.
#include "acl/access_list.h"
#include "acl/everyone.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

void write_valid_users(smb_share &share) {
  const auto readers = view(share.read_list);
  const auto writers = view(share.write_list);
  if (readers.empty() && writers.empty()) {
    assign(share.valid_users, guest_entry);
    return;
  }
  const auto *const comma = readers.empty() || writers.empty() ? "" : ",";
  assign_list(share.valid_users, Text<2 * list_width>{readers, comma, writers}.view());
}

// Anything that contains "nobody" counts as naming the guest: wanted.
void deny_guest_or_note(smb_share &share) {
  const auto denied = view(share.invalid_users);
  if (!contains(denied, guest)) {
    assign_denied_or_note(share.invalid_users, Text<2 * list_width>{guest_entry, ",", denied}.view());
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void rw_list_rule(smb_share *record) {
  if (record == nullptr) {
    return;
  }
  const LoadWatch watch;
  const auto readers = view(record->read_list);
  const auto writers = view(record->write_list);
  const bool denies_some = record->invalid_users[0] != '\0';

  if (readers.empty() && writers.empty() && !denies_some) {
    assign(record->write_list, everyone);
    assign(record->valid_users, everyone);
    return;
  }
  const bool is_open = is_everyone(readers) || is_everyone(writers);
  if (is_open) {
    assign(record->valid_users, everyone);
  } else {
    write_valid_users(*record);
  }
  if (denies_some) {
    deny_guest_or_note(*record);
  } else if (!is_open) {
    assign(record->invalid_users, guest_entry);
  }
}
