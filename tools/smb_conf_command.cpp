// smb.conf and the tree of DFS links: everything that smbd serves, the automatic shares included.
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"

#include <cstdio>

namespace cli {
namespace {

constexpr const char *smb_conf = "/etc/samba/smb.conf";

// create_smb_conf answers the same for a file that it wrote and one that it could not open.
void expect_writable(const char *path) {
  FILE *file = std::fopen(path, "a");
  if (file == nullptr) {
    throw Refusal(std::string(path) + " cannot be written");
  }
  std::fclose(file);
}

} // namespace

int write_smb_conf(const Words &words) {
  expect(words, 1, 1, "smb-conf");
  const LoadedCatalogue catalogue(get_samba_info2);
  create_p2p_share();
  create_amule_share();
  create_iso_share();
  expect_writable(smb_conf);
  if (create_smb_conf() != 0) {
    throw Refusal(std::string(smb_conf) + " was not written whole");
  }
  create_dfs_link();
  return done;
}

} // namespace cli
