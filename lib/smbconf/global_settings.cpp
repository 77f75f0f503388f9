#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "support/configuration.h"
#include "support/debug.h"
#include "support/network_interface.h"
#include "support/owners.h"
#include "support/text.h"

#include <cstdio>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

using namespace nasshare;

namespace {

constexpr const char *workgroup_key = "/system_mgr/samba/workgroup";
constexpr const char *netbios_name_key = "/system_mgr/samba/netbios_name";
constexpr const char *server_string_key = "/system_mgr/samba/server_string";
constexpr std::size_t mac_name_width = 16;

int read_switch(const char *key) {
  return configured_number(key) == 1 ? 1 : 0;
}

void read_names() {
  read_configured(workgroup_key, pss->workgroup);
  read_configured(netbios_name_key, pss->netbios_name);
  read_configured(server_string_key, pss->server_string);

  if (pss->workgroup[0] == '\0') {
    assign(pss->workgroup, "workgroup");
    xml_set_str(workgroup_key, pss->workgroup);
  }
  if (pss->netbios_name[0] == '\0') {
    char mac[mac_name_width] = "";
    Get_Mac_Str(mac);
    list_debug("mac[%s]\n", mac);
    assign(pss->netbios_name, mac);
    xml_set_str(netbios_name_key, pss->netbios_name);
  }
  if (pss->server_string[0] == '\0') {
    char hardware[512] = "";
    read_configured("/hw_ver", hardware);
    xml_set_str(server_string_key, hardware);
    assign(pss->server_string, view(hardware));
  }
}

} // namespace

void read_global_setting(void) {
  read_names();
  pss->dfs_enable = read_switch("/system_mgr/samba/dfs_enable");
  pss->ads_enable = read_switch("/system_mgr/samba/ads_enable");
  if (pss->ads_enable == 1) {
    read_configured("/system_mgr/samba/ads_workgroup", pss->ads_workgroup);
    read_configured("/system_mgr/samba/ads_username", pss->ads_username);
    read_configured("/system_mgr/samba/ads_password", pss->ads_password);
    read_configured("/system_mgr/samba/ads_realm", pss->ads_realm);
    read_configured("/system_mgr/samba/ads_pwd_server", pss->ads_pwd_server);
  }
}

void Get_Mac_Str(char *destination) {
  Descriptor socket_fd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!socket_fd) {
    std::puts("IOCTL API: Create socket fail");
    return;
  }
  ifreq request{};
  assign(request.ifr_name, appliance_interface);
  ioctl(socket_fd.get(), SIOCGIFHWADDR, &request); // a missing interface reads as address 0
  if (destination != nullptr) {
    auto byte = [&request](int i) {
      return static_cast<unsigned>(static_cast<unsigned char>(request.ifr_hwaddr.sa_data[i]));
    };
    // Without padding: the name has 7 to 12 characters in the field, and hosts are known by it.
    std::snprintf(destination, mac_name_width, "tarvo-%x%x%x", byte(3), byte(4), byte(5));
  }
}
