// How every operation that changed the share list ends.
#pragma once

#include "base/program_lock.h"
#include "base/watch.h"
#include "catalogue/spreading.h"

namespace nasshare {

// Held from the load to the store of a change.
inline constexpr const char *catalogue_lock = "/run/nasshare.lock";

enum class Listing { no, yes };

struct Storing {
  Listing listing = Listing::no;
  int first_volume = no_volume_first; // whose partition takes the file before the others
};

// Writes the list, empties it, spreads the file over the volumes, releases the lock and has the Samba service
// reload. 1; or 0 when the watch over the change has seen trouble, so that the list may lack shares, or when
// it cannot be written or spread. Nothing is stored then.
[[nodiscard]] int store_catalogue(const Watch &change, ProgramLock &lock, const Storing &how = {});

// The end of a change that is not made: the list is emptied, and the answer is 0.
[[nodiscard]] int refuse_change();

} // namespace nasshare
