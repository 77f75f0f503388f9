// Which accounts an access list can name so that they come back as they were.
#pragma once

#include "acl/access_list.h"
#include "base/xml_characters.h"

namespace nasshare {

// Whether the text is an account's name that neither the grammar of lists nor XML makes into another one, and
// that stands in one line.
inline bool is_list_entry(const char *account) {
  if (!is_given(account)) {
    return false;
  }
  const std::string_view name = account;
  return name.size() < name_width && std::ranges::none_of(name, is_list_delimiter) &&
         name.find_first_of("\r\n") == std::string_view::npos && can_xml_hold(name) && !holds_reference(name);
}

} // namespace nasshare
