// How the last load of the catalogue went: smb.conf is not written from one that is doubtful, since accounts
// that are denied could be missing.
#pragma once

#include "base/watch.h"

#include <optional>

namespace nasshare {

// The trouble that the shares in the list came with.
const Trouble &load_verdict();

// Watches what puts shares into the list or changes the listed ones.
class LoadWatch : public KeptWatch {
public:
  enum class Extent {
    whole, // the list is loaded anew: what came before is forgotten
    more   // something is added to what is loaded
  };
  explicit LoadWatch(Extent extent);
};

// Watches what changes an access list, or a record, that may be a listed share's: only then the catalogue's
// verdict is concerned.
class ListWatch {
public:
  explicit ListWatch(const void *changed);

private:
  std::optional<LoadWatch> watch_;
};

} // namespace nasshare
