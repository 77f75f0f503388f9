// The lists of a record that is handed in: where everyone may write, or is denied, and others are named
// beside, everyone becomes everyone else.
#include "acl/everyone.h"
#include "acl/list_accounts.h"
#include "acl/other_accounts.h"
#include "base/debug.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

using namespace nasshare;

void rebuld_input_data(smb_share *record) {
  if (record == nullptr) {
    return;
  }
  const LoadWatch watch;
  const auto readers = view(record->read_list);
  const bool all_write = is_everyone(view(record->write_list));
  const bool all_denied = is_everyone(view(record->invalid_users));
  if (all_write && all_denied) {
    return;
  }
  const auto &other_list = all_denied ? record->write_list : record->invalid_users;
  if ((!all_write && !all_denied) || (readers.empty() && view(other_list).empty())) {
    list_debug("rebuld_input_data return!!\n"); // spelt so: wanted
    return;
  }
  list_debug("run rebuld_input_data! [%d][%d]\n", all_write ? 1 : 0, all_denied ? 1 : 0);
  record_accounts_or_note(readers);
  record_accounts_or_note(view(other_list));
  if (!list_other_accounts_or_note(all_denied ? record->invalid_users : record->write_list) && all_denied) {
    note_doubt(); // whoever is left out would be let in
  }
  Free_Name_List();
}
