// Settings for smb.conf, and what create_smb_conf writes.
#pragma once

#include "appliance.h"
#include "domain.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {

inline void outside_a_domain() {
  put(pss->netbios_name, "tarvo");
  put(pss->server_string, "Two-bay NAS");
  put(pss->workgroup, "WORKGROUP");
}

// A member of the domain CORP; its accounts are those that the name service knows.
inline void in_the_domain() {
  in_a_domain({.netbios_name = "TARVO",
               .username = "administrator",
               .password = "top secret",
               .pwd_server = "dc1.corp.lan"});
  put(pss->workgroup, "unused");
}

inline void volumes_present(int first, int second) {
  pss->vol_present[0] = first;
  pss->vol_present[1] = second;
  put(pss->vol_share_name[0], "Volume_1");
  put(pss->vol_share_name[1], "Volume_2");
}

inline std::string generated() {
  EXPECT_EQ(create_smb_conf(), 0);
  return read_file(smb_conf);
}

// What follows the global section.
inline std::string generated_sections() {
  const std::string text = generated();
  const std::string last_lines = "queueresume command = /usr/local/LPRng/sbin/lpc -P%p start\n\n";
  const std::size_t end = text.find(last_lines);
  return end == std::string::npos ? "no global section: " + text : text.substr(end + last_lines.size());
}

} // namespace nasshare::tests
