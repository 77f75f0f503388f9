// The recycle folder in a volume's root.
#pragma once

namespace nasshare {

inline constexpr const char *recycle_folder = "recycle";

} // namespace nasshare
