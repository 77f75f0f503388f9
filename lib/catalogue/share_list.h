// The end of the share list.
#pragma once

#include "nasshare/catalogue.h"

namespace nasshare {

// Appends a copy of the record, whose name is not listed. Null for a record without a name, and when memory
// is short, which is noted.
smb_share *append_share_or_note(const smb_share &record);

} // namespace nasshare
