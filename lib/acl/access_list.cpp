// Where an access list may be cut.
#include "acl/access_list.h"

#include "base/watch.h"

namespace nasshare {

std::string_view cut_list(std::string_view list, std::size_t room) {
  if (list.size() <= room) {
    return list;
  }
  const auto comma = list.substr(0, room + 1).find_last_of(',');
  // An entry that alone is longer than a list names no account. It must not vanish either: a share whose
  // lists are all empty is open to everyone.
  return comma == std::string_view::npos || comma == 0 ? cut_text(list, room) : list.substr(0, comma);
}

void assign_list(std::span<char> field, std::string_view list) {
  place(field, cut_list(list, field.size() - 1));
}

void assign_denied_or_note(std::span<char> field, std::string_view list) {
  if (list.size() >= field.size()) {
    note_doubt();
  }
  assign_list(field, list);
}

} // namespace nasshare
