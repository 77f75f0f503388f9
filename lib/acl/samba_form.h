// An access list in Samba's form.
#pragma once

namespace nasshare {

// What convert_list() does. Whether the list, which may become longer, still names all that it did.
[[nodiscard]] bool convert_list_or_note(char *list);

} // namespace nasshare
