// What the library's lists hold.
#pragma once

#include "nasshare/catalogue.h"
#include "text.h"

#include <gtest/gtest.h>
#include <ostream>
#include <vector>

namespace nasshare::tests {

// The nodes of a list, head first; as many as it counts. While it counts none, its ends mean nothing.
template <class List> auto nodes_of(const List &list) {
  std::vector<decltype(list.head)> nodes;
  for (auto *node = list.count == 0 ? nullptr : list.head; node != nullptr; node = node->next) {
    nodes.push_back(node);
  }
  EXPECT_EQ(nodes.size(), static_cast<std::size_t>(list.count));
  return nodes;
}

// The name list.
Names listed_names();
// The names in the share list.
Names listed_shares();

// Who may do what on a share.
struct Lists {
  std::string read, write, deny;

  bool operator==(const Lists &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Lists &lists);

Lists lists_of(const smb_share &share);
// Of a listed share, or no_such_share().
Lists lists_of(const char *name);
Lists no_such_share();

// A listed share with exactly these lists, without what inserting makes of them.
smb_share *list_share(const char *name, const Lists &lists);

} // namespace nasshare::tests
