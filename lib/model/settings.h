// Values of the configuration database. What is stored and what is published depends on them: that the
// database could not be read is noted.
#pragma once

#include "base/watch.h"
#include "nasshare/platform.h"

#include <cerrno>
#include <cstddef>

namespace nasshare {

// The value as xml_get_int() has it.
inline int setting_or_note(const char *key) {
  errno = 0;
  const int value = xml_get_int(key);
  if (value == 0) {
    note_setting_error();
  }
  return value;
}

// Only 1 means on.
inline bool is_on_or_note(const char *key) {
  return setting_or_note(key) == 1;
}

// The same for a text, as xml_get_str() has it.
template <std::size_t Width> void read_setting_or_note(const char *key, char (&field)[Width]) {
  errno = 0;
  xml_get_str(key, Width, field);
  if (field[0] == '\0') {
    note_setting_error();
  }
}

} // namespace nasshare
