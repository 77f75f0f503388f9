// Which records the catalogue can hold so that they come back as they were.
#include "catalogue/storable_record.h"

#include "acl/access_list.h"
#include "acl/everyone.h"
#include "base/text.h"
#include "base/xml_characters.h"

#include <unistd.h>

namespace nasshare {

bool leaves_room_for_guest(const smb_share &share) {
  const auto denied = view(share.invalid_users);
  return contains(denied, guest) || denied.size() + guest_entry.size() + 1 < sizeof share.invalid_users;
}

// A text that XML cannot hold would come back as another one; a line end would begin a line of its own in
// smb.conf; a field without a terminator has no end.
bool is_storable(std::span<const char> field) {
  const auto text = view(field);
  return text.size() < field.size() && text.find_first_of("\r\n") == std::string_view::npos &&
         can_xml_hold(text);
}

bool is_storable_identity(std::span<const char> field) {
  return is_storable(field) && !holds_reference(view(field));
}

bool is_storable(const smb_share *record) {
  return record != nullptr && record->name[0] != '\0' && record->path[0] != '\0' &&
         is_storable(record->path) && access(record->path, F_OK) == 0 && is_storable(record->name) &&
         is_storable(record->comment) && is_storable(record->oplocks) && is_storable(record->map_archive) &&
         is_storable(record->read_list) && is_storable(record->write_list) &&
         is_storable(record->invalid_users) && leaves_room_for_guest(*record);
}

} // namespace nasshare
