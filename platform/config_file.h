// The file of the configuration database: read whole, kept aside when it is broken.
#pragma once

#include <optional>
#include <string>

namespace platform {

// The file's whole text. An empty optional when it cannot be read, and errno says why; an absent file is an
// empty text.
std::optional<std::string> read_file(const char *path);

// Gives the file a second name; a file that had it loses it.
bool keep_aside(const char *path, const char *aside);

} // namespace platform
