// Which disk sits in which bay, as "sg_scan" reports it.
#pragma once

#include <string_view>

namespace nasshare {

// The device name of a line "/dev/sda: scsi0 ..."; empty when the line does not begin with a device.
std::string_view device_of_line(std::string_view line);

} // namespace nasshare
