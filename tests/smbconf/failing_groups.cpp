// A group database that fails: these definitions win over the C library's.
#include "failing_groups.h"

#include "next_definition.h"

#include <cerrno>
#include <grp.h>

namespace nasshare::tests {

bool groups_fail = false;

} // namespace nasshare::tests

using nasshare::tests::groups_fail;

extern "C" [[gnu::visibility("default")]] group *getgrnam(const char *name) {
  static auto *const look_up = nasshare::tests::next_definition<group *(const char *)>("getgrnam");
  errno = groups_fail ? EIO : errno;
  return groups_fail ? nullptr : look_up(name);
}

extern "C" [[gnu::visibility("default")]] group *getgrent() {
  static auto *const next = nasshare::tests::next_definition<group *()>("getgrent");
  errno = groups_fail ? EIO : errno;
  return groups_fail ? nullptr : next();
}
