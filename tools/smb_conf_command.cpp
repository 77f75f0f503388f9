// smb.conf and the tree of DFS links: everything that smbd serves, the automatic shares included.
#include "base/owners.h"
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "smbconf/smb_conf.h"

#include <cstdio>

namespace nasshare::cli {
namespace {

// create_smb_conf answers the same for a file that it wrote and one that it could not open.
void expect_writable(const char *path) {
  const File file(std::fopen(path, "a"));
  if (!file) {
    throw Refusal(std::string(path) + " cannot be written");
  }
}

} // namespace

int write_smb_conf(const Words &words) {
  expect(words, 1, 1, "smb-conf");
  const LoadedCatalogue catalogue(get_samba_info2);
  create_p2p_share();
  create_amule_share();
  create_iso_share();
  expect_writable(smb_conf_path);
  if (create_smb_conf() != 0) {
    throw Refusal(std::string(smb_conf_path) + " was not written whole");
  }
  create_dfs_link();
  return done;
}

} // namespace nasshare::cli
