// Loading the catalogue, as every operation that needs the shares begins.
#pragma once

namespace nasshare {

// What get_samba_info() does. Trouble is noted, and kept as the verdict on what is loaded.
void load_catalogue_or_note();

} // namespace nasshare
