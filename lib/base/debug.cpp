// The two gates of the debug output, and the flag that opens them.
#include "base/debug.h"

#include <cstdarg>
#include <cstdio>

int smb_dbg_flag = 0;

namespace nasshare {

void list_debug(const char *format, ...) {
  if (!is_listing()) {
    return;
  }
  va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
}

void trace_debug(const char *format, ...) {
  if (!is_tracing()) {
    return;
  }
  va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
}

} // namespace nasshare
