// Where nsswitch.conf is.
#pragma once

namespace nasshare {

inline constexpr const char *nsswitch_conf_path = "/etc/nsswitch.conf";

} // namespace nasshare
