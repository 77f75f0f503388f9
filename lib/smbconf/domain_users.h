// The users that winbind lists, as "wbinfo -z" prints them: one a line, name, user id, group id.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace nasshare {

struct DomainUser {
  std::string_view name;
  std::int32_t uid = 0;
  std::int32_t gid = 0;
};

// Understands one line. None for the command's error message, the ticket service's account "krbtgt", the
// appliance's own computer account and a line that lacks a field.
std::optional<DomainUser> domain_user_of_line(std::string_view line);

} // namespace nasshare
