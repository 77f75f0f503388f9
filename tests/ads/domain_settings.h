// The settings of a domain member, in the catalogue object or in the configuration database.
#pragma once

#include "appliance.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <string_view>

namespace nasshare::tests {

template <std::size_t size> void set(char (&field)[size], std::string_view text) {
  std::fill(std::copy(text.begin(), text.end(), field), field + size, '\0');
}

// As if read from the database: domain CORP, realm CORP.LAN, controller dc1, account Administrator.
inline void in_a_domain(std::string_view password = "secret") {
  smbshare.ads_enable = 1;
  set(smbshare.netbios_name, "tarvo-a1b2");
  set(smbshare.ads_workgroup, "CORP");
  set(smbshare.ads_username, "Administrator");
  set(smbshare.ads_password, password);
  set(smbshare.ads_realm, "CORP.LAN");
  set(smbshare.ads_pwd_server, "dc1");
}

// The same in the database.
inline void configure_domain(Appliance &machine, std::string_view enabled = "1") {
  machine.config("/system_mgr/samba/workgroup", "workgroup")
      .config("/system_mgr/samba/netbios_name", "tarvo-a1b2")
      .config("/system_mgr/samba/server_string", "storage")
      .config("/system_mgr/samba/ads_enable", std::string(enabled))
      .config("/system_mgr/samba/ads_workgroup", "CORP")
      .config("/system_mgr/samba/ads_username", "Administrator")
      .config("/system_mgr/samba/ads_password", "secret")
      .config("/system_mgr/samba/ads_realm", "CORP.LAN")
      .config("/system_mgr/samba/ads_pwd_server", "dc1");
}

} // namespace nasshare::tests
