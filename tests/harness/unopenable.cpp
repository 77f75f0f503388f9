// Sockets in place of files, and the limit of descriptors.
#include "unopenable.h"

#include "fields.h"
#include "files.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace nasshare::tests {

namespace {

// The lowest free descriptor with that many free ones below it.
int free_descriptor(int below) {
  for (int descriptor = 0;; ++descriptor) {
    if (::fcntl(descriptor, F_GETFD) == -1 && below-- == 0) {
      return descriptor;
    }
  }
}

} // namespace

void make_unopenable(const std::string &path) {
  const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  put(address.sun_path, path);
  files::require(::bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, path);
  ::close(server);
}

DescriptorLimit::DescriptorLimit(int more) {
  files::require(::getrlimit(RLIMIT_NOFILE, &before_) == 0, "getrlimit");
  rlimit limit = before_;
  limit.rlim_cur = static_cast<rlim_t>(free_descriptor(more));
  files::require(::setrlimit(RLIMIT_NOFILE, &limit) == 0, "setrlimit");
}

DescriptorLimit::~DescriptorLimit() {
  ::setrlimit(RLIMIT_NOFILE, &before_);
}

} // namespace nasshare::tests
