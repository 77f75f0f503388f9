// Every hidden system partition gets the whole catalogue.
#pragma once

namespace nasshare {

// Copies the temporary share XML into the system folder of each of them. False, and a change is then not
// done, when that file is not this user's own, when the partitions cannot be listed, and when there are
// system folders but none of them took the file. That one of several did not take it makes no difference.
[[nodiscard]] bool spread_catalogue();

} // namespace nasshare
