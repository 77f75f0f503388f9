// The two disks and their data volumes, for the shares of the download folders.
#pragma once

#include "../catalogue/listed_shares.h"
#include "../catalogue/volume_table.h"
#include "appliance.h"
#include "nasshare/special.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

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

inline std::string listing() {
  smb_dbg_flag = 1;
  std::string text = output_of(List_Smb_Node);
  smb_dbg_flag = 0;
  return text;
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
