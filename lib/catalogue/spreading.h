// Every hidden system partition gets the whole catalogue.
#pragma once

#include <string_view>

namespace nasshare {

// The volume whose partition takes the new file before the others; none in particular.
inline constexpr int no_volume_first = -1;

// Copies the temporary share XML, which holds the text, into the system folder of each of them. True when the
// next load shows that catalogue, though a partition may have kept its old file; else every partition has its
// old file again, and a change is not done. The share list must be empty.
[[nodiscard]] bool spread_catalogue(std::string_view text, int first_volume = no_volume_first);

} // namespace nasshare
