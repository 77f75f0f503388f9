// Who everyone and the guest are in an access list: the lists that let in, or keep out, all accounts, and the
// entry of the account "nobody", as which Samba lets in who has none.
#pragma once

#include <string_view>

namespace nasshare {

inline constexpr std::string_view everyone = "#nobody#,#@allaccount#";
inline constexpr std::string_view domain_everyone = "#nobody#,#@Domain Users#";
inline constexpr std::string_view guest = "nobody";
inline constexpr std::string_view guest_entry = "#nobody#";

// Whether a share's list is that of everyone. Records hold the local form in domain mode too: it becomes the
// domain's in smb.conf.
inline bool is_everyone(std::string_view list) {
  return list == everyone;
}

} // namespace nasshare
