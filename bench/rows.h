// All rows, by subject.
#pragma once

#include "row.h"

namespace nasshare::bench {

Rows list_check_rows();
Rows loading_rows();
Rows storing_rows();
Rows smb_conf_rows();
Rows change_rows();

} // namespace nasshare::bench
