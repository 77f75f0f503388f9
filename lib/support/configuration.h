// Values of the configuration database on which it depends what is stored.
#pragma once

#include "nasshare/platform.h"
#include "support/trouble.h"

#include <cerrno>

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

} // namespace nasshare
