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

constexpr const char *workgroup_key = "/system_mgr/samba/workgroup";
constexpr const char *netbios_name_key = "/system_mgr/samba/netbios_name";
constexpr const char *server_string_key = "/system_mgr/samba/server_string";

void set_default_workgroup() {
  assign(pss->workgroup, "workgroup");
  xml_set_str(workgroup_key, pss->workgroup);
}

void set_default_netbios_name() {
  char name[32] = "";
  Get_Mac_Str(name);
  list_debug("mac[%s]\n", name);
  assign(pss->netbios_name, name);
  xml_set_str(netbios_name_key, pss->netbios_name);
}

void set_default_server_string() {
  char hardware[name_width] = "";
  read_setting_or_note("/hw_ver", hardware);
  xml_set_str(server_string_key, hardware);
  assign(pss->server_string, view(hardware));
}

void read_names() {
  read_setting_or_note(workgroup_key, pss->workgroup);
  read_setting_or_note(netbios_name_key, pss->netbios_name);
  read_setting_or_note(server_string_key, pss->server_string);
  if (pss->workgroup[0] == '\0') {
    set_default_workgroup();
  }
  if (pss->netbios_name[0] == '\0') {
    set_default_netbios_name();
  }
  if (pss->server_string[0] == '\0') {
    set_default_server_string();
  }
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
