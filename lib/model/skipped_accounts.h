// Accounts which are nobody's who uses shares: those of the system, and the domain's own. The two lists of
// system accounts differ on purpose: the guest, "nobody", is never put into a list that names everyone one by
// one, since that would let guests in, or keep them out, beside what the list says of them; but files that a
// guest deletes need a folder to go to.
#pragma once

#include "model/own_name.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nasshare {

inline constexpr std::array<std::string_view, 6> accounts_without_list_entry{
    "root", "nobody", "ftp", "admin", "sshd", "squeezecenter"};
inline constexpr std::array<std::string_view, 5> accounts_without_recycle_folder{"root", "admin", "ftp",
                                                                                 "sshd", "squeezecenter"};

template <std::size_t Size>
bool is_among(const std::array<std::string_view, Size> &accounts, std::string_view name) {
  return std::ranges::find(accounts, name) != accounts.end();
}

// Whether a line of winbind's list of users is that of the domain's ticket service or of the appliance
// itself.
inline bool is_skipped_domain_user(std::string_view line) {
  return line == "krbtgt" || begins_with_own_name(line);
}

} // namespace nasshare
