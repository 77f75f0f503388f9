#include "acl/accounts.h"

#include "nasshare/acl.h"
#include "support/text.h"
#include "support/trouble.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>

using namespace nasshare;

namespace {

// A database that cannot be read counts as not knowing the name, but the answer must not be stored.
template <class Entry> int is_known(Entry *(*look_up)(const char *), const char *name) {
  errno = 0;
  bool known = name != nullptr && look_up(name) != nullptr;
  if (!known) {
    note_account_error();
  }
  return known ? 1 : 0;
}

} // namespace

int check_user(const char *name) {
  return is_known(getpwnam, name);
}

int check_group(const char *name) {
  return is_known(getgrnam, name);
}

bool nasshare::user_exists(std::string_view name) {
  return check_user(Text<list_width>{name}.c_str()) == 1;
}

bool nasshare::group_exists(std::string_view name) {
  return check_group(Text<list_width>{name}.c_str()) == 1;
}
