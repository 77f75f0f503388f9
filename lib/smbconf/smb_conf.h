// Where smb.conf is.
#pragma once

namespace nasshare {

inline constexpr const char *smb_conf_path = "/etc/samba/smb.conf";

} // namespace nasshare
