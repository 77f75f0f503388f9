// The results of joining a domain and of obtaining a ticket that are no phrase's; the phrases' own, 51 to 55
// and 101 to 104, stand beside them.
#pragma once

namespace nasshare {

inline constexpr int joined = 50;
inline constexpr int join_not_started = 56; // a ticket command that could not be started too: wanted
inline constexpr int ticket_obtained = 100;
inline constexpr int other_ticket_error = 105;

} // namespace nasshare
