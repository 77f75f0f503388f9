// How every operation that changed the share list ends.
#pragma once

#include "support/program_lock.h"

namespace nasshare {

enum class Print { nothing, list };

// Writes the list, empties it, spreads the file over the volumes, releases the lock and has the Samba service
// reload. 1, or 0 when the list could not be written or was not loaded whole; nothing is spread then.
int store_catalogue(Print print, ProgramLock &lock);

} // namespace nasshare
