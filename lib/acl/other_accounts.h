// "Everyone but these" as a list.
#pragma once

namespace nasshare {

// What rebuild_user_list_except_input() does. Whether the list (12288 bytes) names all of them: an account
// may be one too many, or have a name that no list can hold.
[[nodiscard]] bool list_other_accounts_or_note(char *list);

} // namespace nasshare
