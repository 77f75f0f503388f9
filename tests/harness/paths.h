// The appliance's files that tests of several subsystems look at.
#pragma once

namespace nasshare::tests {

inline constexpr const char *smb_conf = "/etc/samba/smb.conf";
inline constexpr const char *config_database = "/etc/NAS_CFG/config.xml";
inline constexpr const char *krb5_conf = "/etc/krb5.conf";
inline constexpr const char *nsswitch_conf = "/etc/nsswitch.conf";

// The share XML of each hidden system partition, and where a change is written before it is spread over them.
inline constexpr const char *first_hidden_folder = "/mnt/HD_a4/.systemfile";
inline constexpr const char *first_share_file = "/mnt/HD_a4/.systemfile/.smb.xml";
inline constexpr const char *second_share_file = "/mnt/HD_b4/.systemfile/.smb.xml";
inline constexpr const char *temporary_share_file = "/tmp/.smb.xml";
// The same in domain mode.
inline constexpr const char *first_domain_file = "/mnt/HD_a4/.systemfile/.smb_ads.xml";
inline constexpr const char *second_domain_file = "/mnt/HD_b4/.systemfile/.smb_ads.xml";

} // namespace nasshare::tests
