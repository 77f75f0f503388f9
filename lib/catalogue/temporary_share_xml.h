// The file in which a change is written before it is spread over the volumes. It lies in /tmp, where
// everybody can write: what others have planted there is neither followed nor in the way.
#pragma once

#include <string_view>

namespace nasshare {

inline constexpr const char *temporary_share_xml = "/tmp/.smb.xml";

// Whether it is a file of this process's user alone: no link, no second name, no pipe, nobody else's.
bool is_own_temporary_share_xml();

// Whether everybody can write in the folder that holds the path.
bool is_in_shared_folder(std::string_view path);

// Replaces a file in such a folder. False when that fails; what stood there is then as it was.
[[nodiscard]] bool store_in_shared_folder(const char *path, std::string_view content);

} // namespace nasshare
