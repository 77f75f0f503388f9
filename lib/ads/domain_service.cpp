// Entering and leaving the domain: which files are written and which services run, in which order.
#include "ads/codes.h"
#include "ads/krb5_conf.h"
#include "ads/nsswitch_conf.h"
#include "base/debug.h"
#include "base/watch.h"
#include "model/domain_mode.h"
#include "nasshare/ads.h"
#include "nasshare/smbconf.h"
#include "nasshare/support.h"
#include "smbconf/smb_conf.h"

#include <cstdlib>
#include <unistd.h>

namespace nasshare {
namespace {

void run(const char *command) {
  static_cast<void>(std::system(command)); // of the steps, the join and the ticket alone have an answer
}

enum class ConfiguredMode { domain, local, unknown };

// A configuration that cannot be read says nothing about the mode.
ConfiguredMode read_mode() {
  const Watch watch;
  read_global_setting();
  if (watch.seen()) {
    return ConfiguredMode::unknown;
  }
  return is_domain_mode() ? ConfiguredMode::domain : ConfiguredMode::local;
}

bool configuration_exists() {
  return access(nsswitch_conf_path, F_OK) == 0 && access(krb5_conf_path, F_OK) == 0 &&
         access(smb_conf_path, F_OK) == 0;
}

void stop_services() {
  run("kill -9 `pidof winbindd` >/dev/null 2>&1");
  run("smb stop >/dev/null 2>&1");
}

void start_winbind() {
  run("winbindd >/dev/null 2>&1");
  run("wbinfo -u >/dev/null 2>&1");
  run_smbcom();
  run("smbcmd -l");
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_start(void) {
  if (read_mode() != ConfiguredMode::domain) {
    return 2;
  }
  run_smbcv();
  run("smbcom -g");
  ads_create_nsswitch_conf();
  ads_create_krb5_conf();
  if (!configuration_exists()) {
    return 0;
  }
  stop_services();
  run("samba_tmpfs.sh 1");
  run("smb start >/dev/null 2>&1");

  if (const int code = ads_join_domain(); code != joined) {
    trace_debug("ADS_JOIN_ERROR : [%d]\n", code);
    return code;
  }
  if (const int code = ads_kinit(); code != ticket_obtained) {
    trace_debug("KINIT_ERROR : [%d]\n", code);
    return code;
  }
  start_winbind();
  return 1;
}

int ads_stop(void) {
  if (read_mode() != ConfiguredMode::local) {
    return 3;
  }
  run_smbcv();
  run_smbcom();
  ads_create_nsswitch_conf();
  unlink(krb5_conf_path);
  stop_services();
  run("samba_tmpfs.sh 0");
  return 1;
}

int ads_create_pam_samba(int value) {
  return value;
}
