// Local accounts in numbers.
#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace nasshare::tests {

// A password database with the users u0000, u0001, ...
inline std::string numbered_accounts(int count) {
  std::string passwd;
  for (int i = 0; i < count; ++i) {
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), "u%04d:x:%d:500::/:/bin/sh\n", i, 2000 + i);
    passwd += line.data();
  }
  return passwd;
}

} // namespace nasshare::tests
