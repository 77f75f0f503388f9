// Access lists in fields of their own, and the contents of the name list.
#pragma once

#include "nasshare/acl.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {

constexpr std::string_view everyone = "#nobody#,#@allaccount#";

// Puts the text into a field of a record; it has to fit.
template <std::size_t width> void put(char (&field)[width], std::string_view text) {
  if (text.size() >= width) {
    throw std::length_error("text does not fit into its field");
  }
  std::fill(std::copy(text.begin(), text.end(), field), field + width, '\0');
}

// Exactly the 12288 bytes that a list has, so that the sanitizer sees every byte beyond them.
class AccessList {
public:
  explicit AccessList(std::string_view text) : field_(12288, '\0') {
    std::copy(text.begin(), text.end(), field_.begin());
  }
  operator char *() { return field_.data(); }
  [[nodiscard]] std::string text() const { return field_.data(); }

private:
  std::vector<char> field_;
};

// The names u0000, u0001, ... as entries. 1536 of them are 12287 bytes, a list that fills its field.
inline std::string numbered_entries(int count) {
  std::string list;
  for (int i = 0; i < count; ++i) {
    char entry[16];
    std::snprintf(entry, sizeof entry, "%s#u%04d#", i == 0 ? "" : ",", i);
    list += entry;
  }
  return list;
}

inline std::vector<std::string> listed_names() {
  std::vector<std::string> names;
  const smb_name_node *node = pnl->count == 0 ? nullptr : pnl->head;
  for (; node != nullptr; node = node->next) {
    names.emplace_back(node->name);
  }
  return names;
}

} // namespace nasshare::tests
