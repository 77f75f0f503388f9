#include "catalogue/share_xml.h"
#include "catalogue/store_catalogue.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/support.h"
#include "support/debug.h"
#include "support/text.h"

#include <unistd.h>

using namespace nasshare;

namespace {

bool xml_can_hold_all(const smb_share &share) {
  return xml_can_hold(view(share.hd_serial)) && xml_can_hold(view(share.name)) &&
         xml_can_hold(view(share.comment)) && xml_can_hold(view(share.path)) &&
         xml_can_hold(view(share.oplocks)) && xml_can_hold(view(share.map_archive)) &&
         xml_can_hold(view(share.read_list)) && xml_can_hold(view(share.write_list)) &&
         xml_can_hold(view(share.invalid_users));
}

bool is_valid(const smb_share *record) {
  if (record == nullptr || view(record->name).empty() || view(record->path).empty()) {
    return false;
  }
  Text<path_width> path{view(record->path)};
  return access(path.c_str(), F_OK) == 0 && xml_can_hold_all(*record);
}

// In domain mode the lists are kept as they are: they name domain accounts.
void normalise_lists(smb_share &record) {
  pss->ads_enable = xml_get_int("/system_mgr/samba/ads_enable");
  if (pss->ads_enable != 1) {
    pss->ads_enable = 0;
    rebuld_input_data(&record);
  }
}

// Tags the record with the volume that holds its path; on neither volume it keeps the caller's tags.
bool place(smb_share &record) {
  for (int volume = 0; volume < 2; ++volume) {
    if (view(record.path).starts_with(SMB_VOL_NAME[volume])) {
      record.volume_raid = pss->vol_raid_type[volume];
      assign(record.hd_serial, view(pss->vol_comp_str[volume]));
      return true;
    }
  }
  return false;
}

int refuse() {
  Free_All_List();
  return 0;
}

} // namespace

int add_share(smb_share *record) {
  if (!is_valid(record)) {
    list_debug("input data error! [%s]\n", record == nullptr ? "" : record->path);
    return 0;
  }
  normalise_lists(*record);
  list_debug("read_list       : [%s]\n", record->read_list);
  list_debug("write_list      : [%s]\n", record->write_list);
  list_debug("invalid_users   : [%s]\n", record->invalid_users);

  get_samba_info();
  if (check_smb_share_name(record->name) != nullptr) {
    return refuse();
  }
  if (place(*record)) {
    list_debug("####p->hd_serial [%s]\n", record->hd_serial);
  }
  if (Insert_Smb_Node(record) == nullptr) {
    return refuse();
  }
  return store_catalogue(Print::list);
}

int mod_share(smb_share *record) {
  if (!is_valid(record)) {
    list_debug("input data error!\n");
    return 0;
  }
  normalise_lists(*record);

  get_samba_info();
  if (check_smb_share_name(record->name) == nullptr) {
    return refuse();
  }
  place(*record);
  Modify_Smb_Node(record);
  return store_catalogue(Print::nothing);
}

int del_share(const char *name) {
  if (!given(name)) {
    return 0;
  }
  get_samba_info();
  if (check_smb_share_name(name) == nullptr) {
    list_debug("not find %s\n", name);
    return refuse();
  }
  Remove_Smb_Node_By_Name(name);
  return store_catalogue(Print::nothing);
}

int nasshare::store_catalogue(Print print) {
  bool written = create_HD_xml(temporary_share_xml) == 0;
  if (print == Print::list) {
    List_Smb_Node();
  }
  Free_All_List();
  if (!written) {
    return 0;
  }
  cp_xml_to_hidden();
  unlink(temporary_share_xml);
  sync();
  run_smbcom();
  return 1;
}
