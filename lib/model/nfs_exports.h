// What /etc/exports says: which folders NFS clients can reach.
#pragma once

#include <string_view>

namespace nasshare {

// Whether a line of the file begins with that path in double quotes. That the file cannot be read is noted.
bool is_exported_or_note(std::string_view path);

} // namespace nasshare
