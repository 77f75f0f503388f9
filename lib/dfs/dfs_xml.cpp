// Which values the DFS files can hold.
#include "dfs/dfs_xml.h"

#include "base/text.h"
#include "base/xml_characters.h"

namespace nasshare {

bool is_storable_value(std::string_view value) {
  constexpr std::string_view added = "amp;"; // behind every "&"
  const auto ampersands = static_cast<std::size_t>(std::ranges::count(value, '&'));
  return value.size() + ampersands * added.size() < name_width && can_xml_hold(value);
}

} // namespace nasshare
