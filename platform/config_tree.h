// The configuration database as a tree: the key path "/system_mgr/samba/workgroup" is the text of the element
// config/system_mgr/samba/workgroup.
#pragma once

#include "base/xml_reader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::platform {

using KeyPath = std::vector<std::string>;

// The element names of a key path; none for a text that is no key path ("", "/", "a/b", "/a//b", "/1").
KeyPath key_path(std::string_view key);

// The value of the key; an empty optional when the database does not hold the key.
std::optional<std::string> find_value(xmlDoc *database, const KeyPath &path);

// Stores the value and makes the elements that are missing. False when memory is short.
[[nodiscard]] bool store_value(xmlDoc *database, const KeyPath &path, const std::string &value);

} // namespace nasshare::platform
