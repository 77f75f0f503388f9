// The walk of the account databases, from their start; it is the process-wide one. That a database cannot be
// read is noted.
#pragma once

#include "acl/local_accounts.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>

namespace nasshare {

namespace detail {
template <class Entry, class Visit>
void walk_or_note(const LocalAccounts &local, void (*rewind)(), Entry *(*next)(), void (*end)(),
                  Visit visit) {
  errno = 0;
  rewind();
  local.note_error();
  errno = 0;
  while (const auto *const entry = next()) {
    visit(*entry);
    errno = 0;
  }
  local.note_error();
  end();
}
} // namespace detail

template <class Visit> void each_account_or_note(Visit visit) {
  detail::walk_or_note(local_users, setpwent, getpwent, endpwent, visit);
}

template <class Visit> void each_group_or_note(Visit visit) {
  detail::walk_or_note(local_groups, setgrent, getgrent, endgrent, visit);
}

} // namespace nasshare
