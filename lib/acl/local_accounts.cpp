// Whether a question that was not answered tells that there is no such account.
#include "acl/local_accounts.h"

#include "base/watch.h"

#include <sys/stat.h>

namespace nasshare {
namespace {

bool is_there(const LocalAccounts &local) {
  struct stat status {};
  return stat(local.path, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
}

} // namespace

// Every caller has asked for something that was not found, or for everything.
void LocalAccounts::note_error() const {
  note_account_error();
  if (!is_there(*this)) {
    note_doubt();
  }
}

} // namespace nasshare
