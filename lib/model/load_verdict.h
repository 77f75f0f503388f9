// How the last load of the catalogue went: smb.conf is not written from one that is doubtful, since accounts
// that are denied could be missing.
#pragma once

#include "base/watch.h"

namespace nasshare {

// The trouble that the settings and the shares in the list came with.
const Trouble &load_verdict();

// Watches what puts settings and shares into the catalogue, what changes the listed ones, and what changes or
// judges the entries of access lists: wherever such a list lies, the next call may put it into the catalogue.
// What answers other questions does not concern it.
class LoadWatch : public Watch {
public:
  enum class Extent {
    whole, // the list is loaded anew: what came before is forgotten
    more   // something is added to what is loaded
  };
  explicit LoadWatch(Extent extent = Extent::more);
};

} // namespace nasshare
