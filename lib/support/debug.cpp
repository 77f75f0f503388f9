#include "support/debug.h"

#include <cstdarg>
#include <cstdio>

int smb_dbg_flag = 0;

namespace nasshare {

void list_debug(const char *format, ...) {
  if (!listing()) {
    return;
  }
  va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
}

void trace_debug(const char *format, ...) {
  if (!tracing()) {
    return;
  }
  va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
}

} // namespace nasshare
