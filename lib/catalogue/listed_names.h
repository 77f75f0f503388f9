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
  void remember_or_note(std::string_view name);

  NameSet names_;
};

} // namespace nasshare
