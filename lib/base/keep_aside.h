// A broken file keeps a second name, such as NAME.bad, when its successor takes the first.
#pragma once

namespace nasshare {

// Gives the file that name too, or NAME.bad2 to NAME.bad9 where others have it: what broke before is not lost
// for it, but for the ninth. False when that cannot be done.
[[nodiscard]] bool keep_aside(const char *path);

} // namespace nasshare
