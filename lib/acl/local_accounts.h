// The local account databases: what is missing there, is missing. A database that is not there itself or is
// empty, while another program replaces it or for good, excludes nobody.
#pragma once

namespace nasshare {

struct LocalAccounts {
  const char *path;

  // Notes the error of a question to the account databases.
  void note_error() const;
};

inline constexpr LocalAccounts local_users{"/etc/passwd"};
inline constexpr LocalAccounts local_groups{"/etc/group"};

} // namespace nasshare
