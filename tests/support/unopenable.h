// A file that is there and that nobody can open, root included: a socket.
#pragma once

#include "files.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace nasshare::tests {

inline void make_unopenable(const std::string &path) {
  const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  files::require(::bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, path);
  ::close(server);
}

} // namespace nasshare::tests
