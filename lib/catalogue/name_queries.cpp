// Is a share's name taken? The two queries answer in opposite senses, which is wanted: callers depend on it.
#include "base/argument.h"
#include "nasshare/catalogue.h"

using namespace nasshare;

int chk_share(const char *name) {
  const Argument wanted(name);
  get_samba_info();
  const bool is_taken = check_smb_share_name(wanted.c_str()) != nullptr;
  Free_All_List();
  return is_taken ? 0 : 1;
}

int chk_name_path(const char *name, const char *path) {
  const Argument wanted(name);
  const Argument wanted_path(path);
  get_samba_info();
  const auto *const share = check_smb_share_name(wanted.c_str());
  const bool is_free = share == nullptr;
  const bool has_path = !is_free && view(share->path) == wanted_path.view();
  Free_All_List();
  return is_free ? 1 : has_path ? 2 : 0;
}
