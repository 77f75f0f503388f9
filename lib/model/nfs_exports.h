// What /etc/exports says: which folders NFS clients can reach.
#pragma once

#include "base/name_set.h"

#include <string_view>

namespace nasshare {

// Whether a line of the file begins with that path in double quotes. That the file cannot be read is noted.
bool is_exported_or_note(std::string_view path);

// The same for many paths: the file is read once.
class NfsExports {
public:
  void read_or_note();
  [[nodiscard]] bool contain_or_note(std::string_view path) const;

private:
  NameSet paths_;
  bool are_known_ = false; // whole, for which memory may be too short
};

} // namespace nasshare
