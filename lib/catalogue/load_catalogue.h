// The load of an operation that goes on to change the catalogue.
#pragma once

namespace nasshare {

// What get_samba_info() does, but trouble that the operation met before stays noted.
void load_catalogue();

} // namespace nasshare
