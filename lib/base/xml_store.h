// Storing XML files.
#pragma once

#include <string_view>

namespace nasshare {

// Whether the text holds records and is not well-formed. Short of memory nobody can tell, and it counts as
// sound.
[[nodiscard]] bool is_broken_xml(std::string_view text);

// Gives a file whose text is broken a second name, such as NAME.bad, before its successor takes the first. A
// folder that takes no second name does not keep the change from being made.
void keep_aside_if_broken(const char *path, std::string_view text);

// Replaces the file with the text of a document. False, and the old file untouched, on failure.
[[nodiscard]] bool store_xml(std::string_view text, const char *path);

} // namespace nasshare
