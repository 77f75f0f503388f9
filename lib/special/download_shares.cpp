// The shares of the download folders, of the P2P client and of the aMule package, open to everyone.
#include "base/text.h"
#include "base/xml_reader.h"
#include "model/automatic_shares.h"
#include "model/file_services.h"
#include "model/load_verdict.h"
#include "model/volumes.h"
#include "nasshare/platform.h"
#include "nasshare/special.h"
#include "nasshare/support.h"

namespace nasshare {
namespace {

constexpr const char *p2p_settings = "/etc/NAS_CFG/p2psettings.xml";

// The first volume whose mount point the place contains, else the first volume.
int volume_of(std::string_view place) {
  const auto found =
      std::ranges::find_if(volumes, [place](int volume) { return mentions_volume(place, volume); });
  return found == volumes.end() ? volumes.front() : *found;
}

// The application's folder bears its name, in the root of the volume that holds the place.
void insert_share(std::string_view name, std::string_view place, const FileServices &services) {
  const int volume = volume_of(place);
  smb_share share{}; // without any list: open to everyone
  assign(share.name, name);
  assign(share.comment, Text<name_width>{name, " Folder Share"}.view());
  assign(share.path, Text<path_width>{mount_point(volume), "/", name}.view());
  assign(share.browseable, "yes");
  assign(share.public_, "yes");
  share.volume_raid = pss->vol_raid_type[volume];
  assign(share.hd_serial, view(pss->vol_comp_str[volume]));
  assign(share.oplocks, services.forbid_oplocks_or_note(share.path) ? "no" : "yes");
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
} // namespace nasshare

using namespace nasshare;

void create_p2p_share(void) {
  const LoadWatch watch;
  pss->list_changed = 1;
  const FileServices services;
  const auto document = load_or_note(p2p_settings);
  auto *const settings = child_element(root_of(document), "settings");
  if (settings != nullptr) {
    insert_share(p2p_name, ChildText(settings, "save_path").view(), services);
  }
}

void create_amule_share(void) {
  if (smb_check_ps("modx") != 1) {
    return; // the add-on service does not run, or is being restarted
  }
  const LoadWatch watch;
  const FileServices services;
  MODX_COMMAND(1, 0);
  MODX_ReadAllXml();
  if (const auto *const package = find_package(amule_name)) {
    pss->list_changed = 1;
    insert_share(amule_name, view(package->path), services);
  }
  MODX_FreeAllXml();
}
