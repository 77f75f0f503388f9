// Which shares are listed already, for a load, which asks for each of many.
#pragma once

#include "base/name_set.h"
#include "nasshare/catalogue.h"

namespace nasshare {

// Holds as long as nothing else changes the list.
class ListedNames {
public:
  ListedNames();

  // Insert_Smb_Node() at the cost of one look.
  void insert_share_or_note(const smb_share &record);

private:
  [[nodiscard]] bool contains(const smb_share &record) const;
  void remember_or_note(std::string_view name);

  NameSet names_;
  bool is_whole_ = true; // or memory is too short for all names
};

} // namespace nasshare
