// The check of one access list against the accounts of the system.
#include "acl/accounts.h"
#include "acl/known_entries.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

using namespace nasshare;

void run_check_samba_list(char *list) {
  const LoadWatch watch;
  keep_known_entries(list, user_exists_or_note, group_exists_or_note);
}
