// The Samba-wide settings of the configuration database, and the defaults that are stored there when they are
// missing.
#include "base/debug.h"
#include "base/text.h"
#include "model/dfs_switch.h"
#include "model/domain_mode.h"
#include "model/load_verdict.h"
#include "model/settings.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"

namespace nasshare {
namespace {

void set_default_workgroup() {
  assign(pss->workgroup, "workgroup");
}

void set_default_netbios_name() {
  char name[32] = "";
  Get_Mac_Str(name);
  list_debug("mac[%s]\n", name);
  assign(pss->netbios_name, name);
}

void set_default_server_string() {
  read_setting_or_note("/hw_ver", pss->server_string);
}

// A name that could not be read is there all the same: no default is stored over it, nor one that is made of
// what could not be read.
class Name {
public:
  Name(const char *key, char (&field)[name_width]) : key_(key), field_(field) {
    const Watch watch;
    read_setting_or_note(key_, field_);
    is_readable_ = !watch.seen();
  }

  void complete(void (*set_default)()) const {
    if (field_[0] != '\0') {
      return;
    }
    const Watch watch;
    set_default();
    if (is_readable_ && !watch.seen()) {
      xml_set_str(key_, field_);
    }
  }

private:
  const char *key_;
  char (&field_)[name_width];
  bool is_readable_;
};

void read_names() {
  const Name workgroup("/system_mgr/samba/workgroup", pss->workgroup);
  const Name netbios_name("/system_mgr/samba/netbios_name", pss->netbios_name);
  const Name server_string("/system_mgr/samba/server_string", pss->server_string);
  workgroup.complete(set_default_workgroup);
  netbios_name.complete(set_default_netbios_name);
  server_string.complete(set_default_server_string);
}

void read_domain() {
  read_setting_or_note("/system_mgr/samba/ads_workgroup", pss->ads_workgroup);
  read_setting_or_note("/system_mgr/samba/ads_username", pss->ads_username);
  read_setting_or_note("/system_mgr/samba/ads_password", pss->ads_password);
  read_setting_or_note("/system_mgr/samba/ads_realm", pss->ads_realm);
  read_setting_or_note("/system_mgr/samba/ads_pwd_server", pss->ads_pwd_server);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void read_global_setting(void) {
  const LoadWatch watch;
  read_names();
  read_dfs_switch_or_note();
  pss->dfs_enable = is_dfs_on() ? 1 : 0;
  read_domain_mode_or_note();
  if (is_domain_mode()) {
    read_domain();
  }
}
