// Domain settings in memory and in the database.
#include "domain.h"

#include "fields.h"
#include "nasshare/catalogue.h"
#include "paths.h"

namespace nasshare::tests {

void in_a_domain(const DomainSettings &settings) {
  smbshare.ads_enable = 1;
  put(smbshare.netbios_name, settings.netbios_name);
  put(smbshare.ads_workgroup, settings.workgroup);
  put(smbshare.ads_username, settings.username);
  put(smbshare.ads_password, settings.password);
  put(smbshare.ads_realm, settings.realm);
  put(smbshare.ads_pwd_server, settings.pwd_server);
}

void configure_domain(Appliance &machine, const DomainSettings &settings) {
  machine.config("/system_mgr/samba/workgroup", "workgroup")
      .config("/system_mgr/samba/netbios_name", settings.netbios_name)
      .config("/system_mgr/samba/server_string", "storage")
      .config("/system_mgr/samba/ads_enable", "1")
      .config("/system_mgr/samba/ads_workgroup", settings.workgroup)
      .config("/system_mgr/samba/ads_username", settings.username)
      .config("/system_mgr/samba/ads_password", settings.password)
      .config("/system_mgr/samba/ads_realm", settings.realm)
      .config("/system_mgr/samba/ads_pwd_server", settings.pwd_server);
}

Appliance domain_member() {
  Appliance machine;
  for (const char *name : {"net", "kinit", "winbindd", "wbinfo", "smbcmd", "samba_tmpfs.sh"}) {
    machine.command(name);
  }
  constexpr int no_process = 1;
  machine.command("pidof", "", no_process).file(smb_conf, "[ global ]\n");
  configure_domain(machine);
  return machine;
}

} // namespace nasshare::tests
