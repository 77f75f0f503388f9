#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/special.h"
#include "nasshare/support.h"
#include "smbconf/file_services.h"
#include "support/text.h"
#include "support/xml.h"

using namespace nasshare;

namespace {

struct Application {
  std::string_view name;
  std::string_view comment;
  std::string_view folders[4]; // one per data volume; the first two are ever chosen
};

constexpr Application p2p{
    "P2P",
    "P2P Folder Share",
    {"/mnt/HD/HD_a2/P2P", "/mnt/HD/HD_b2/P2P", "/mnt/HD/HD_c2/P2P", "/mnt/HD/HD_d2/P2P"}};

constexpr Application amule{
    "aMule",
    "aMule Folder Share",
    {"/mnt/HD/HD_a2/aMule", "/mnt/HD/HD_b2/aMule", "/mnt/HD/HD_c2/aMule", "/mnt/HD/HD_d2/aMule"}};

// The first volume whose mount point the place contains, else the first volume.
int volume_of(std::string_view place) {
  return contains(place, SMB_VOL_NAME[0]) || !contains(place, SMB_VOL_NAME[1]) ? 0 : 1;
}

void insert_share(const Application &application, std::string_view place, const FileServices &services) {
  int volume = volume_of(place);
  smb_share share{}; // without any list: open to everyone
  assign(share.name, application.name);
  assign(share.comment, application.comment);
  assign(share.path, application.folders[volume]);
  assign(share.browseable, "yes");
  assign(share.public_, "yes");
  share.volume_raid = pss->vol_raid_type[volume];
  assign(share.hd_serial, view(pss->vol_comp_str[volume]));
  assign(share.oplocks, services.forbid_oplocks(share.path) ? "no" : "yes");
  assign(share.map_archive, "no");
  Insert_Smb_Node(&share);
}

const modx_package *find_package(std::string_view name) {
  const auto *package = p_lib_list == nullptr ? nullptr : p_lib_list->first;
  while (package != nullptr && view(package->name) != name) {
    package = package->next;
  }
  return package;
}

} // namespace

void create_p2p_share(void) {
  pss->list_changed = 1;
  const FileServices services;
  auto document = load_xml("/etc/NAS_CFG/p2psettings.xml");
  auto *settings = child_element(document ? xmlDocGetRootElement(document.get()) : nullptr, "settings");
  if (settings != nullptr) {
    insert_share(p2p, ChildText(settings, "save_path").view(), services);
  }
}

void create_amule_share(void) {
  if (smb_check_ps("modx") != 1) {
    return; // the add-on service does not run, or is being restarted
  }
  const FileServices services;
  MODX_COMMAND(1, 0);
  MODX_ReadAllXml();
  if (const auto *package = find_package(amule.name)) {
    pss->list_changed = 1;
    insert_share(amule, view(package->path), services);
  }
  MODX_FreeAllXml();
}
