// The two gates of the debug output. They differ on purpose: a listing prints for any value of smb_dbg_flag
// but 0, a trace (command echoes, comparisons) only for exactly 1.
#pragma once

#include "nasshare/support.h"

namespace nasshare {

inline bool is_listing() {
  return smb_dbg_flag != 0;
}
inline bool is_tracing() {
  return smb_dbg_flag == 1;
}

[[gnu::format(printf, 1, 2)]] void list_debug(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void trace_debug(const char *format, ...);

} // namespace nasshare
