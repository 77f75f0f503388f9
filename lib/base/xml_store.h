// Storing XML files.
#pragma once

#include <string_view>

namespace nasshare {

// Whether the text holds records and is not well-formed. Short of memory nobody can tell, and it counts as
// sound.
[[nodiscard]] bool is_broken_xml(std::string_view text);

// Gives a file with records that is not well-formed a second name, NAME.bad, before its successor takes the
// first.
void keep_broken_xml_aside(const char *path);

// Replaces the file with the text of a document. False, and the old file untouched, on failure.
[[nodiscard]] bool store_xml(std::string_view text, const char *path);

} // namespace nasshare
