// A disk's serial number by ATA IDENTIFY DEVICE.
#pragma once

namespace nasshare {

// What get_serial_number() does. Whether the disk answered, though it may have no serial number.
[[nodiscard]] bool read_ata_serial_or_note(char *destination, const char *device_name);

} // namespace nasshare
