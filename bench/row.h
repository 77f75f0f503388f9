// One row of the table: a call that is measured, and the rows that its cost is divided by.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nasshare::bench {

struct Size {
  int shares;
  int accounts;
};

// Such as "get_samba_info/1000/50".
std::string row_name(const std::string &name, const Size &size);

// What else does the same work, or a part of it that cannot be left out.
struct Floor {
  std::string row;
  std::string by = "own"; // what is divided: own CPU time, or "wall"
};

struct Row {
  std::string name;
  std::vector<Floor> floors = {};
  std::function<void()> prepare = {};     // makes the machine
  std::function<void()> before_each = {}; // outside of the time; may be empty
  std::function<void()> call = {};
  bool tells_memory = false; // of the shares that the call leaves loaded
};

using Rows = std::vector<Row>;

// Hands the row to the benchmark library.
void register_row(const Row &row);

} // namespace nasshare::bench
