// The local account databases: what is missing there, is missing. A database that is not there itself, while
// another program replaces it or for good, names nobody and excludes nobody.
#pragma once

namespace nasshare {

struct LocalAccounts {
  const char *path;
  bool may_be_empty;

  // Notes the error of a question to the account databases.
  void note_error() const;
};

inline constexpr LocalAccounts local_users{"/etc/passwd", false};
inline constexpr LocalAccounts local_groups{"/etc/group", true};

} // namespace nasshare
