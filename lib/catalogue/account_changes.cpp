// Changing one account's permissions on the shares of the permission records: load, change, store.
#include "acl/list_entry.h"
#include "base/argument.h"
#include "base/watch.h"
#include "catalogue/loading.h"
#include "catalogue/storing.h"
#include "nasshare/acl.h"

using namespace nasshare;

int acnt_mod_share(const char *account) {
  if (!is_given(account) || is_acnt_empty() != 0) {
    return 0;
  }
  if (!is_list_entry(account)) {
    free_acnt_list(); // another account is not to take over what was meant for this one
    return 0;
  }
  const Watch change;
  ProgramLock lock(catalogue_lock);
  const Argument name(account);
  load_catalogue_or_note();
  modify_config_permision(name.c_str());
  free_acnt_list();
  return store_catalogue(change, lock);
}
