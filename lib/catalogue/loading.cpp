// Loading the catalogue: settings, volumes, their names, their shares, the check of the shares' lists, USB
// disks.
#include "catalogue/loading.h"

#include "base/linked_list.h"
#include "base/text.h"
#include "catalogue/share_xml.h"
#include "model/file_services.h"
#include "model/load_verdict.h"
#include "model/volume_identity.h"
#include "model/volumes.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "nasshare/volume.h"

namespace nasshare {

void load_catalogue_or_note() {
  const LoadWatch watch(LoadWatch::Extent::whole);
  Free_All_List();
  check_hd();
  check_user_group();
  create_usb_share(); // last: the check of the lists never sees them
}

} // namespace nasshare

using namespace nasshare;

void get_samba_info(void) {
  load_catalogue_or_note();
}

void get_samba_info2(void) {
  load_catalogue_or_note();
  const LoadWatch watch;
  const FileServices services;
  for (auto &share : each(*pss)) {
    if (services.forbid_oplocks_or_note(share.path)) {
      assign(share.oplocks, "no");
    }
  }
}

int nasshare_load_trouble(void) {
  const auto &verdict = load_verdict();
  return verdict.is_doubtful ? 2 : verdict.lacks_some ? 1 : 0;
}

void check_hd(void) {
  const LoadWatch watch;
  read_global_setting();
  get_hd_raid_info(pss);
  get_HD_share_name(pss);
  ShareXmlFiles files;
  for (const int volume : volumes) {
    if (!is_present(*pss, volume)) {
      continue;
    }
    if (!has_known_disk(volume)) {
      note_lack(); // its records lie where nobody looks
    }
    read_volume_or_note(files, volume);
  }
}
