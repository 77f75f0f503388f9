// While it lives, this process can open `more` further descriptors and no others: how a file that is there,
// or a socket, cannot be opened even by root.
#pragma once

#include "files.h"

#include <fcntl.h>
#include <sys/resource.h>

namespace nasshare::tests {

class DescriptorLimit {
public:
  explicit DescriptorLimit(int more) {
    files::require(::getrlimit(RLIMIT_NOFILE, &before_) == 0, "getrlimit");
    rlimit limit = before_;
    limit.rlim_cur = static_cast<rlim_t>(free_descriptor(more));
    files::require(::setrlimit(RLIMIT_NOFILE, &limit) == 0, "setrlimit");
  }
  ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &before_); }
  DescriptorLimit(const DescriptorLimit &) = delete;
  DescriptorLimit &operator=(const DescriptorLimit &) = delete;

private:
  // The lowest free descriptor with that many free ones below it.
  static int free_descriptor(int below) {
    int descriptor = 0;
    for (;; ++descriptor) {
      if (::fcntl(descriptor, F_GETFD) == -1 && below-- == 0) {
        return descriptor;
      }
    }
  }

  rlimit before_{};
};

} // namespace nasshare::tests
