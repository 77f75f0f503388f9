// Does the account exist? As getpwnam(3) and getgrnam(3) have it.
#include "acl/accounts.h"

#include "acl/local_accounts.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>

namespace nasshare {
namespace {

template <class Entry>
bool is_known_or_note(const LocalAccounts &local, Entry *(*look_up)(const char *), const char *name) {
  errno = 0;
  const bool is_known = name != nullptr && look_up(name) != nullptr;
  if (!is_known) {
    local.note_error();
  }
  return is_known;
}

} // namespace

bool user_exists_or_note(std::string_view name) {
  return is_known_or_note(local_users, getpwnam, Text<list_width>{name}.c_str());
}

bool group_exists_or_note(std::string_view name) {
  return is_known_or_note(local_groups, getgrnam, Text<list_width>{name}.c_str());
}

} // namespace nasshare

using namespace nasshare;

int check_user(const char *name) {
  const LoadWatch watch;
  return is_known_or_note(local_users, getpwnam, name) ? 1 : 0;
}

int check_group(const char *name) {
  const LoadWatch watch;
  return is_known_or_note(local_groups, getgrnam, name) ? 1 : 0;
}
