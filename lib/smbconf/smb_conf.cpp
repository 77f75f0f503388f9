// The order of smb.conf (smb.conf(5)): the global section, printers, the shares, recycle bins, the DFS root.
#include "smbconf/smb_conf.h"

#include "base/debug.h"
#include "base/in_place.h"
#include "model/dfs_switch.h"
#include "model/file_services.h"
#include "model/load_verdict.h"
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

} // namespace
} // namespace nasshare

using namespace nasshare;

int create_smb_conf(void) {
  const LoadWatch watch; // the lists are converted in place
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
  return watch.seen().is_doubtful ? -1 : file.commit();
}
