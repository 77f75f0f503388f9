// Access lists as people write them, "alice,@staff" or "everyone", and as the library holds them,
// "#alice#,#@staff#" or "#nobody#,#@allaccount#".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace people_list {

std::string everyone(bool domain_mode);

// Throws std::runtime_error for a list with an empty entry or a character that no entry can hold.
std::string to_access_list(std::string_view text, bool domain_mode);

std::string from_access_list(std::string_view list);

// The entries of an access list without their hashes; groups keep their '@'.
std::vector<std::string> accounts(std::string_view list);

// The access list without the entry of the guest account.
std::string without_guest(std::string_view list);

} // namespace people_list
