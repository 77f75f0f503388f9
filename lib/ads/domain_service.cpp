#include "nasshare/ads.h"
#include "nasshare/smbconf.h"
#include "nasshare/support.h"
#include "support/debug.h"

#include <cstdlib>
#include <unistd.h>

using namespace nasshare;

namespace {

constexpr const char *nsswitch_conf = "/etc/nsswitch.conf";
constexpr const char *krb5_conf = "/etc/krb5.conf";

void run(const char *command) {
  static_cast<void>(std::system(command)); // what these do shows in the join
}

bool configuration_exists() {
  return access(nsswitch_conf, F_OK) == 0 && access(krb5_conf, F_OK) == 0 &&
         access("/etc/samba/smb.conf", F_OK) == 0;
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

int ads_start(void) {
  read_global_setting();
  if (pss->ads_enable == 0) {
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

  if (int code = ads_join_domain(); code != 50) {
    trace_debug("ADS_JOIN_ERROR : [%d]\n", code);
    return code;
  }
  if (int code = ads_kinit(); code != 100) {
    trace_debug("KINIT_ERROR : [%d]\n", code);
    return code;
  }
  start_winbind();
  return 1;
}

int ads_stop(void) {
  read_global_setting();
  if (pss->ads_enable == 1) {
    return 3;
  }
  run_smbcv();
  run_smbcom();
  ads_create_nsswitch_conf();
  unlink(krb5_conf);
  stop_services();
  run("samba_tmpfs.sh 0");
  return 1;
}

int ads_create_pam_samba(int value) {
  return value;
}
