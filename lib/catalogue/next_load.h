// What the next load will show of a catalogue that not every hidden partition took.
#pragma once

namespace nasshare {

// Whether the next load shows what it would show if the present volumes were all read from that file: a
// partition that keeps its old file does no harm where it says the same of its own volume. False also when
// that cannot be told. The share list must be empty, and is so afterwards.
[[nodiscard]] bool next_load_shows(const char *path);

} // namespace nasshare
