// Files that an operation does not even replace with the same text.
#pragma once

#include "appliance.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {

inline void expect_untouched(const std::vector<std::string> &paths, const std::function<void()> &operation) {
  const auto stand = [&paths] {
    std::vector<std::pair<ino_t, std::string>> files;
    for (const std::string &path : paths) {
      files.emplace_back(inode(path), read_file(path));
    }
    return files;
  };
  const auto before = stand();
  operation();
  EXPECT_EQ(stand(), before);
}

} // namespace nasshare::tests
