// Names, each of which is found at once.
#pragma once

#include "base/owners.h"

#include <cstddef>
#include <string_view>

namespace nasshare {

// A hash table with open addressing, in malloc's memory.
class NameSet {
public:
  NameSet() = default;
  NameSet(const NameSet &) = delete;
  NameSet &operator=(const NameSet &) = delete;
  ~NameSet();

  // Puts a copy of the name in. False, and the set as it was, when memory is short.
  [[nodiscard]] bool insert(std::string_view name);
  [[nodiscard]] bool contains(std::string_view name) const;

private:
  struct Name {
    std::size_t size;
    char *bytes; // null in a free place
  };

  // The place that holds the name, or the free one where it would be.
  [[nodiscard]] Name &place_of(std::string_view name) const;
  [[nodiscard]] bool make_room();

  Allocated<Name> places_;
  std::size_t room_ = 0; // a power of two
  std::size_t count_ = 0;
};

} // namespace nasshare
