// Which records the catalogue can hold so that they come back as they were.
#pragma once

#include "nasshare/catalogue.h"

#include <span>

namespace nasshare {

// Whether a field's text comes back from the files, and stands in one line of smb.conf.
bool is_storable(std::span<const char> field);

// The same for the volume's identity, which stands in the file as markup: a drive too may report one that
// does not come back.
bool is_storable_identity(std::span<const char> field);

// Whether the guest still fits in front of those who are denied, where the next load puts it: nobody may drop
// out at the end for it.
bool leaves_room_for_guest(const smb_share &share);

// Whether the record names a share and a path that exists, and everything that it says is storable, but for
// the tags of a volume, which it may be given yet.
bool is_storable(const smb_share *record);

} // namespace nasshare
