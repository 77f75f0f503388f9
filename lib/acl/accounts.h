// Does the account exist? Asked of the name service, which also knows the domain's accounts. That it cannot
// tell is noted; the account then counts as unknown.
#pragma once

#include <string_view>

namespace nasshare {

bool user_exists_or_note(std::string_view name);
bool group_exists_or_note(std::string_view name);

} // namespace nasshare
