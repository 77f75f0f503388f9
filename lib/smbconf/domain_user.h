// The users that winbind lists, one a line: name, user id, group id.
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

// Understands one line of "wbinfo -z". None for its error message, the ticket service's account "krbtgt", the
// appliance's own computer account (a line that begins with own_name in any case) and a line that lacks a
// field.
std::optional<DomainUser> parse_domain_user(std::string_view line);

} // namespace nasshare
