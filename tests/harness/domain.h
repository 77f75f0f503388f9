// Active Directory mode: its settings, and the commands of a domain member.
#pragma once

#include "appliance.h"

#include <string>

namespace nasshare::tests {

struct DomainSettings {
  std::string netbios_name = "tarvo-a1b2";
  std::string workgroup = "CORP";
  std::string username = "Administrator";
  std::string password = "secret";
  std::string realm = "CORP.LAN";
  std::string pwd_server = "dc1";
};

// As if read from the configuration database.
void in_a_domain(const DomainSettings &settings = {});

// In the configuration database. Domain mode is on.
void configure_domain(Appliance &machine, const DomainSettings &settings = {});

// A configured appliance on which smb.conf lies and every command of a join succeeds.
Appliance domain_member();

// What a join with the settings above runs, and what its trace says of the two commands.
inline constexpr const char *steps_to_the_join = "smbcv\n"
                                                 "smbcom -g\n"
                                                 "pidof winbindd\n"
                                                 "smb stop\n"
                                                 "samba_tmpfs.sh 1\n"
                                                 "smb start\n"
                                                 "net ads join -U Administrator%secret\n";
inline constexpr const char *join_echo = "ads join cmd : [net ads join -U 'Administrator%secret' 2>&1]\n";
inline constexpr const char *ticket_echo = "kinit : [echo 'secret' | kinit 'Administrator@CORP.LAN' 2>&1]\n";

} // namespace nasshare::tests
