// How every operation that changed the share list ends.
#pragma once

namespace nasshare {

enum class Print { nothing, list };

// Writes the list, empties it, spreads the file over the volumes and has the Samba service reload. 1, or 0
// when the list could not be written; nothing is spread then.
int store_catalogue(Print print);

} // namespace nasshare
