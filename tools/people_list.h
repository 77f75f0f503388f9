// Access lists as people write them, "alice,@staff" or "everyone", and as the library holds them,
// "#alice#,#@staff#" or "#nobody#,#@allaccount#".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nasshare::cli {

// The list that lets in everyone, in the library's form.
std::string_view everyone_list(bool is_domain_mode);

// Throws std::runtime_error for a list with an empty entry or a character that no entry can hold.
std::string to_access_list(std::string_view text, bool is_domain_mode);

std::string from_access_list(std::string_view list);

// The entries of an access list without their hashes; groups keep their '@'.
std::vector<std::string> accounts_of(std::string_view list);

// The access list without the entry of the guest account.
std::string without_guest(std::string_view list);

} // namespace nasshare::cli
