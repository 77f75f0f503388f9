// Files that are there and that nobody can open, root included.
#pragma once

#include <string>

#include <sys/resource.h>

namespace nasshare::tests {

// A socket, which open() refuses.
void make_unopenable(const std::string &path);

// While it lives, this process can open `more` further descriptors and no others: files, sockets and pipes
// alike.
class DescriptorLimit {
public:
  explicit DescriptorLimit(int more);
  ~DescriptorLimit();
  DescriptorLimit(const DescriptorLimit &) = delete;
  DescriptorLimit &operator=(const DescriptorLimit &) = delete;

private:
  rlimit before_{};
};

} // namespace nasshare::tests
