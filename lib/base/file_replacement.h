// How a stored file is replaced: at any instant, a power cut included, the old or the new one stands whole.
#pragma once

#include "base/owners.h"

#include <string_view>

namespace nasshare {

// The name under which a file's successor is written, in the same folder.
inline constexpr std::string_view successor_suffix = ".new";

// The mode of the new file: that of any file the process creates, but that others never write to it; or the
// old file's mode and owner, and without an old one its owner's alone (0600).
enum class Mode { as_created, kept_or_private };

// Replaces the file's content. False, and the old file untouched, when anything fails.
[[nodiscard]] bool store_file(const char *path, std::string_view content, Mode mode = Mode::as_created);

// Flushes the finished file `successor`, renames it over `target` and flushes the folder. On failure the
// successor is removed and false is the answer; `target` is then as it was.
[[nodiscard]] bool put_in_place(const char *successor, const char *target);

// The steps of store_file() for those who create and rename the successor in another way. Writes, flushes and
// closes it.
[[nodiscard]] bool fill_successor(Descriptor &successor, const char *path, std::string_view content,
                                  Mode mode);
// After the rename. The new file is in place already; a folder that cannot be flushed only leaves the moment
// open.
void flush_folder_of(std::string_view path);

} // namespace nasshare
