// The walk of the account databases, from their start; it is the process-wide one.
#pragma once

#include "support/trouble.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>

namespace nasshare {

template <class Visit> void each_account(Visit visit) {
  errno = 0;
  setpwent();
  note_account_error();
  for (;;) {
    errno = 0;
    const auto *account = getpwent();
    if (account == nullptr) {
      break;
    }
    visit(*account);
  }
  note_account_error();
  endpwent();
}

template <class Visit> void each_group(Visit visit) {
  errno = 0;
  setgrent();
  note_account_error();
  for (;;) {
    errno = 0;
    const auto *group = getgrent();
    if (group == nullptr) {
      break;
    }
    visit(*group);
  }
  note_account_error();
  endgrent();
}

} // namespace nasshare
