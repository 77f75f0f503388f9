// The users that winbind lists, as "wbinfo -z" prints them.
#include "smbconf/domain_users.h"

#include "base/decimal.h"
#include "model/skipped_accounts.h"

namespace nasshare {

std::optional<DomainUser> domain_user_of_line(std::string_view line) {
  if (is_skipped_domain_user(line) || contains(line, "Error looking up domain users")) {
    return std::nullopt;
  }
  DomainUser user;
  user.name = take_word(line);
  const bool is_complete = !user.name.empty() && take_decimal(line, user.uid) && take_decimal(line, user.gid);
  return is_complete ? std::optional(user) : std::nullopt;
}

} // namespace nasshare
