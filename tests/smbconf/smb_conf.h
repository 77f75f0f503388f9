// Settings for smb.conf, and what create_smb_conf writes.
#pragma once

#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nasshare::tests {

constexpr const char *smb_conf = "/etc/samba/smb.conf";

// Puts the text into a field of a record; it has to fit.
template <std::size_t width> void put(char (&field)[width], std::string_view text) {
  if (text.size() >= width) {
    throw std::length_error("text does not fit into its field");
  }
  std::fill(std::copy(text.begin(), text.end(), field), field + width, '\0');
}

inline void outside_a_domain() {
  put(pss->netbios_name, "tarvo");
  put(pss->server_string, "Two-bay NAS");
  put(pss->workgroup, "WORKGROUP");
}

// The domain CORP; its accounts are those that the name service knows.
inline void in_a_domain() {
  put(pss->netbios_name, "TARVO");
  put(pss->workgroup, "unused");
  put(pss->ads_workgroup, "CORP");
  put(pss->ads_username, "administrator");
  put(pss->ads_password, "top secret");
  put(pss->ads_realm, "CORP.LAN");
  put(pss->ads_pwd_server, "dc1.corp.lan");
  pss->ads_enable = 1;
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
