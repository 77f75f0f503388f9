#include "catalogue/load_catalogue.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "nasshare/support.h"
#include "nasshare/volume.h"
#include "smbconf/file_services.h"
#include "support/linked_list.h"
#include "support/text.h"
#include "support/trouble.h"

using namespace nasshare;

void get_samba_info(void) {
  load_begins();
  load_catalogue();
}

void nasshare::load_catalogue() {
  Free_All_List();
  check_hd();
  check_user_group();
  create_usb_share(); // last: the access-list check never sees them
}

void get_samba_info2(void) {
  get_samba_info();
  const FileServices services;
  for (auto &share : each(*pss)) {
    if (services.forbid_oplocks(share.path)) {
      assign(share.oplocks, "no");
    }
  }
}

void check_hd(void) {
  read_global_setting();
  get_hd_raid_info(pss);
  get_HD_share_name(pss);
  for (int volume = 0; volume < 2; ++volume) {
    if (pss->vol_present[volume] == 1) {
      read_HD_xml(volume);
    }
  }
}

namespace {

// The name may lie in the very list that the load empties.
smb_share *load_and_find(const char *name) {
  const Text<2 * name_width> wanted{name == nullptr ? "" : name};
  get_samba_info();
  return check_smb_share_name(wanted.c_str());
}

} // namespace

// The two queries answer in opposite senses; callers depend on it.
int chk_share(const char *name) {
  int result = load_and_find(name) == nullptr ? 1 : 0;
  Free_All_List();
  return result;
}

int chk_name_path(const char *name, const char *path) {
  const Text<2 * path_width> wanted{path == nullptr ? "" : path};
  const auto *share = load_and_find(name);
  int result = 1;
  if (share != nullptr) {
    result = view(share->path) == wanted.view() ? 2 : 0;
  }
  Free_All_List();
  return result;
}
