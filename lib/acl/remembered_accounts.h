// Accounts and groups, each asked for once during an operation that checks many entries.
#pragma once

#include "base/name_set.h"

#include <string_view>

namespace nasshare {

// What accounts.h answers, remembered. Where many are asked for, the database is walked once; a name that the
// walk did not show is still looked up, since not every name service lists what it knows. What a walk or a
// look-up cannot tell is noted, and not remembered.
class RememberedAccounts {
public:
  // Looks one up, and walks all: of the users, or of the groups.
  using LookUp = bool (*)(std::string_view name);
  using Walk = void (*)(RememberedAccounts &accounts);
  RememberedAccounts(LookUp look_up_or_note, Walk walk_or_note);

  bool exists_or_note(std::string_view name);
  // For the walk. Without memory for it, the name is looked up when it is asked for.
  void remember(std::string_view name) { static_cast<void>(known_.insert(name)); }

private:
  LookUp look_up_or_note_;
  Walk walk_or_note_;
  NameSet known_;
  NameSet unknown_;
  int look_ups_ = 0;
};

// The users and the groups of the system.
class RememberedUsers : public RememberedAccounts {
public:
  RememberedUsers();
};
class RememberedGroups : public RememberedAccounts {
public:
  RememberedGroups();
};

} // namespace nasshare
