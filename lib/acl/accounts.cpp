#include "acl/accounts.h"

#include "nasshare/acl.h"
#include "support/text.h"

#include <grp.h>
#include <pwd.h>

using namespace nasshare;

int check_user(const char *name) {
  return name != nullptr && getpwnam(name) != nullptr ? 1 : 0;
}

int check_group(const char *name) {
  return name != nullptr && getgrnam(name) != nullptr ? 1 : 0;
}

bool nasshare::user_exists(std::string_view name) {
  return check_user(Text<list_width>{name}.c_str()) == 1;
}

bool nasshare::group_exists(std::string_view name) {
  return check_group(Text<list_width>{name}.c_str()) == 1;
}
