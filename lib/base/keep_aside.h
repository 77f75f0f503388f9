// A broken file keeps a second name, NAME.bad, when its successor takes the first.
#pragma once

namespace nasshare {

// Gives the file that name too; another file that had it loses it. False when that cannot be done.
[[nodiscard]] bool keep_aside(const char *path);

} // namespace nasshare
