// Values of the configuration database on which it depends what is stored or published.
#pragma once

#include "nasshare/platform.h"
#include "support/trouble.h"

#include <cerrno>
#include <cstddef>

namespace nasshare {

// The value as xml_get_int() has it; trouble is noted when the database could not be read.
inline int configured_number(const char *key) {
  errno = 0;
  int value = xml_get_int(key);
  if (value == 0) {
    note_setting_error();
  }
  return value;
}

// The same for a text, as xml_get_str() has it.
template <std::size_t width> void read_configured(const char *key, char (&field)[width]) {
  errno = 0;
  xml_get_str(key, width, field);
  if (field[0] == '\0') {
    note_setting_error();
  }
}

} // namespace nasshare
