// Open files and pipes.
#pragma once

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace nasshare::tests {

inline int reading(const char *path) {
  return ::open(path, O_RDONLY | O_CLOEXEC);
}

inline int writing(const char *path) {
  return ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
}

// A pipe that never waits.
struct Pipe {
  std::array<int, 2> ends{-1, -1};

  Pipe() { EXPECT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0); }
  int out() const { return ends[0]; }
  int in() const { return ends[1]; }
};

} // namespace nasshare::tests
