// What /etc/mtab says of the data volumes, the hidden system partitions and the USB disks.
#pragma once

#include "nasshare/catalogue.h"

#include <string_view>

namespace nasshare {

// Understands one line of /etc/mtab.
void read_mtab_line(smb_catalogue &table, std::string_view line);

// Reads the whole file; false when it cannot be opened.
bool read_mtab(smb_catalogue &table);

} // namespace nasshare
