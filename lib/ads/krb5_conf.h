// Where krb5.conf is.
#pragma once

namespace nasshare {

inline constexpr const char *krb5_conf_path = "/etc/krb5.conf";

} // namespace nasshare
