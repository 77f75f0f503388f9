// The order of smb.conf (smb.conf(5)): the global section, printers, the shares, recycle bins, the DFS root.
#include "smbconf/smb_conf.h"

#include "base/debug.h"
#include "base/in_place.h"
#include "base/linked_list.h"
#include "model/dfs_switch.h"
#include "model/domain_mode.h"
#include "model/file_services.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "smbconf/sections.h"

#include <cstdio>

namespace nasshare {
namespace {

void compose(FILE *file, const FileServices &services) {
  write_global_section(file);
  determine_printer_in_hidden(file);
  if (write_share_sections(file, services)) {
    write_recycle_sections(file);
  }
  if (is_dfs_on()) {
    write_dfs_section(file);
  }
}

// The lists in memory are in Samba's form once they are published. Where that cannot be converted once more,
// they are no longer what was loaded.
void leave_lists_converted() {
  for (auto &share : each(*pss)) {
    for (auto *const list : {share.read_list, share.write_list, share.invalid_users, share.valid_users}) {
      convert_list(list);
    }
  }
  if (is_domain_mode() && Is_Smb_Empty() == 0) {
    note_doubt();
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int create_smb_conf(void) {
  const LoadWatch watch;
  const FileServices services;
  trace_debug("afp nfs state is [%d][%d]\n", services.afp ? 1 : 0, services.nfs ? 1 : 0);
  if (load_verdict().is_doubtful) {
    return -1;
  }
  InPlaceFile file(smb_conf_path);
  if (!file.is_open()) {
    return 0;
  }
  if (file.text() == nullptr) {
    return -1;
  }
  compose(file.text(), services);
  // Without an account that nobody could look up, a list of those who are denied would be short of it.
  if (watch.seen().is_doubtful || file.commit() != 0) {
    return -1;
  }
  leave_lists_converted();
  return 0;
}
