// The two disks and their data volumes, for the shares of the download folders.
#pragma once

#include "access_lists.h"
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "share.h"
#include "volume_table.h"

#include <string>
#include <vector>

namespace nasshare::tests {

// Volume 0 is the disk WD-1, volume 1 the disk WD-2 as a mirror's remainder.
inline void two_volumes() {
  set_single_disk(0, "WD-1");
  set_volume(1, 4, "/dev/md2", "UUID=two");
}

// The tags of the listed share's volume and its path.
inline std::string place(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  return share == nullptr ? "not listed"
                          : std::to_string(share->volume_raid) + " " + share->hd_serial + " " + share->path;
}

inline std::string oplocks(const char *name) {
  const smb_share *share = check_smb_share_name(name);
  return share == nullptr ? "not listed" : share->oplocks;
}

// How the share of a download folder is listed: open to everyone.
inline std::string download_listing(const std::string &name, int volume_raid, const std::string &hd_serial,
                                    const std::string &path) {
  return share_listing({Share{name}
                            .comment(name + " Folder Share")
                            .path(path)
                            .browseable("yes")
                            .public_("yes")
                            .oplocks("yes")
                            .map_archive("no")
                            .everyone()
                            .valid(everyone)
                            .tag(volume_raid, hd_serial)});
}

// Which switches and exports forbid oplocks on the folder.
struct OplockRow {
  const char *afp, *nfs;
  std::string exports;
  const char *oplocks;
};

inline std::vector<OplockRow> oplock_rows(const std::string &folder) {
  const std::string exported = "\"" + folder + "\" *(rw)\n";
  return {
      {"0", "0", "", "yes"},
      {"0", "0", exported, "yes"},
      {"0", "1", "", "yes"},
      {"0", "1", exported, "no"},
      {"0", "1", "\"/mnt/HD/HD_b2/other\" *\n" + exported, "no"},
      {"0", "1", folder + " *(rw)\n", "yes"},
      {"0", "1", "\"" + folder + "/\" *(rw)\n", "yes"},
      {"1", "0", "", "no"},
      {"1", "1", "", "no"},
      {"1", "1", exported, "no"},
      {"2", "0", "", "yes"},
      {"2", "2", exported, "yes"},
      {"", "1", exported, "no"},
  };
}

inline void set_file_services(const OplockRow &row) {
  Appliance{}
      .config("/system_mgr/afp/enable", row.afp)
      .config("/system_mgr/nfs/enable", row.nfs)
      .exports(row.exports);
}

} // namespace nasshare::tests
