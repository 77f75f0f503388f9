// The results of joining a domain (50 and following) and of obtaining a ticket (100 and following).
#pragma once

namespace nasshare {

inline constexpr int joined = 50;
inline constexpr int join_not_started = 56; // a ticket command that could not be started too: wanted
inline constexpr int ticket_obtained = 100;
inline constexpr int other_ticket_error = 105;

} // namespace nasshare
