#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "smbconf/file_services.h"
#include "smbconf/sections.h"
#include "support/debug.h"
#include "support/in_place.h"
#include "support/trouble.h"

#include <cstdio>

using namespace nasshare;

namespace {

void compose(FILE *file, const FileServices &services) {
  write_global_section(file);
  determine_printer_in_hidden(file);
  if (write_share_sections(file, services)) {
    write_recycle_sections(file);
  }
  if (pss->dfs_enable == 1) {
    write_dfs_section(file);
  }
}

} // namespace

int create_smb_conf(void) {
  const FileServices services;
  trace_debug("afp nfs state is [%d][%d]\n", services.afp ? 1 : 0, services.nfs ? 1 : 0);
  if (load_is_doubtful()) {
    return -1;
  }
  InPlaceFile smb_conf("/etc/samba/smb.conf");
  if (!smb_conf.is_open()) {
    return 0;
  }
  if (smb_conf.text() == nullptr) {
    return -1;
  }
  compose(smb_conf.text(), services);
  // Without an account that nobody could look up, a list of those who are denied would be short of it.
  return load_is_doubtful() ? -1 : smb_conf.commit();
}
