#include "dfs/dfs_xml.h"

#include "support/text.h"

#include <algorithm>

bool nasshare::is_storable(std::string_view value) {
  constexpr std::string_view added = "amp;"; // behind every "&"
  auto ampersands = static_cast<std::size_t>(std::ranges::count(value, '&'));
  return value.size() + ampersands * added.size() < name_width && xml_can_hold(value);
}
