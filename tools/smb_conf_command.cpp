// smb.conf and the tree of DFS links: everything that smbd serves, the automatic shares included.
#include "base/in_place.h"
#include "base/program_lock.h"
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "smbconf/smb_conf.h"

#include <cstdlib>
#include <optional>

namespace nasshare::cli {
namespace {

// create_smb_conf answers the same for a file that it wrote and one that it could not open.
void expect_writable(const char *path) {
  if (!InPlaceFile(path).is_open()) {
    throw Refusal(std::string(path) + " cannot be written");
  }
}

// From the load to the write, so that no older load replaces what was published since. smbcom, which runs
// this command, says that it has the lock already.
class ServiceLock {
public:
  ServiceLock() {
    if (std::getenv("NASSHARE_SERVICE_LOCK") == nullptr) {
      lock_.emplace("/run/nasshare-service.lock");
    }
  }

private:
  std::optional<ProgramLock> lock_;
};

} // namespace

int write_smb_conf(const Words &words) {
  expect(words, 1, 1, "smb-conf");
  const ServiceLock lock;
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
