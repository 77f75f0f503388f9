// Does an access list name the account, by itself or as a member of a group?
#include "acl/access_list.h"
#include "acl/everyone.h"
#include "acl/list_accounts.h"
#include "base/argument.h"
#include "model/domain_mode.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

bool names_member(std::string_view list, const char *name) {
  record_accounts_or_note(list);
  Print_Name_List();
  const bool is_named = Check_Name_Node(name) != nullptr;
  Free_Name_List();
  return is_named;
}

bool names_local_account(std::string_view list, const Argument &name) {
  if (is_everyone(list)) {
    return true;
  }
  if (is_group(name.view()) && contains(list, Text<list_width>{"#", name.view(), "#"}.view())) {
    return true;
  }
  Free_Name_List();
  return names_member(list, name.c_str());
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int check_user_in_list(const char *list, const char *name) {
  if (!is_given(list) || !is_given(name)) {
    return 0;
  }
  read_domain_switch_or_note();
  const Argument entries(list);
  const Argument wanted(name);
  const bool is_named = is_domain_mode()
                            ? entries.view() == domain_everyone || contains(entries.view(), wanted.view())
                            : names_local_account(entries.view(), wanted);
  return is_named ? 1 : 0;
}
