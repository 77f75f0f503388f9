// Where the service commands are found that an operation runs: smbcom, smb, winbindd and the others.
#pragma once

namespace nasshare::cli {

// Puts the folder in which they were installed in front of the search path (PATH), unless they lie on it
// already: an appliance has its own.
void find_service_commands();

} // namespace nasshare::cli
