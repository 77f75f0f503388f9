// How a stored file is replaced: at any instant, a power cut included, the old or the new one stands whole.
#pragma once

#include <string_view>

namespace nasshare {

// The name under which a file's successor is written, in the same folder.
inline constexpr std::string_view fresh_suffix = ".new";

// The mode of the new file: that of any file the process creates, but that others never write to it; or the
// old file's mode and owner, and without an old one its owner's alone (0600).
enum class Mode { as_created, kept_or_private };

// Flushes the finished file `fresh`, renames it over `target` and flushes the folder. On failure `fresh` is
// removed and false is the answer; `target` is then as it was.
bool put_in_place(const char *fresh, const char *target);

// Replaces the file's content. False, and the old file untouched, when anything fails.
bool store_file(const char *path, std::string_view content, Mode mode = Mode::as_created);

} // namespace nasshare
