// Does the account exist? Asked of the name service, which also knows the domain's accounts.
#pragma once

#include <string_view>

namespace nasshare {

bool user_exists(std::string_view name);
bool group_exists(std::string_view name);

} // namespace nasshare
