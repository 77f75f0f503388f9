// Long access lists.
#include "access_lists.h"

#include <array>
#include <cstdio>

namespace nasshare::tests {

std::string long_entry(std::size_t size) {
  return "#" + std::string(size - 2, 'x') + "#";
}

std::string numbered_entries(int count) {
  std::string list;
  for (int i = 0; i < count; ++i) {
    std::array<char, 16> entry{};
    std::snprintf(entry.data(), entry.size(), "%s#u%04d#", i == 0 ? "" : ",", i);
    list += entry.data();
  }
  return list;
}

std::string full_list() {
  return numbered_entries(entries_of_a_full_list);
}

} // namespace nasshare::tests
