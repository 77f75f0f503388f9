// The appliance's one network interface; its driver also answers for the disk bays.
#pragma once

namespace nasshare {

inline constexpr const char *appliance_interface = "egiga0";

} // namespace nasshare
