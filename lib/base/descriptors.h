// Reading and writing descriptors, past interruptions by signals.
#pragma once

#include "base/owners.h"

#include <cstddef>
#include <string_view>
#include <sys/types.h>

namespace nasshare {

// read(2) and write(2), repeated while a signal interrupts them.
ssize_t read_some(int fd, void *buffer, std::size_t length);
ssize_t write_some(int fd, const void *buffer, std::size_t length);

// The same until length bytes or the end of the file are reached. The count so far after an error, -1 when
// there was none before it.
ssize_t read_full(int fd, void *buffer, std::size_t length);
ssize_t write_full(int fd, const void *buffer, std::size_t length);

// The whole text, or false.
[[nodiscard]] bool write_all(int fd, std::string_view text);

// The same file with a descriptor above those of standard input, output and error: where these are closed,
// nothing that is printed lands in it.
[[nodiscard]] Descriptor beyond_standard(Descriptor file);

} // namespace nasshare
