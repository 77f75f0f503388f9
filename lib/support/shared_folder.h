// Files in a folder where everybody can write, such as /tmp: what others have planted there is neither
// followed nor in the way.
#pragma once

#include <string_view>

namespace nasshare {

// Whether everybody can write in the folder that holds the path.
bool is_in_shared_folder(std::string_view path);

// Whether the path is a file of this process's user alone: no link, no second name, no pipe, nobody else's.
bool is_own_file(const char *path);

} // namespace nasshare
