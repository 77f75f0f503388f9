// Reading from and writing to open descriptors, once or to the end.
#include "appliance.h"
#include "descriptors.h"
#include "nasshare/support.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace nasshare::tests {
namespace {

TEST(SafeRead, IsOneRead) {
  const Pipe pipe;
  ASSERT_EQ(::write(pipe.in(), "text", 4), 4);
  std::array<char, 8> buffer{};
  EXPECT_EQ(safe_read(pipe.out(), buffer.data(), buffer.size()), 4);
  EXPECT_STREQ(buffer.data(), "text");
}

TEST(SafeRead, OtherErrorsAreHandedBack) {
  const Pipe pipe;
  char byte = 0;
  errno = 0;
  EXPECT_EQ(safe_read(pipe.out(), &byte, 1), -1);
  EXPECT_EQ(errno, EAGAIN);
  EXPECT_EQ(safe_read(-1, &byte, 1), -1);
  EXPECT_EQ(errno, EBADF);
}

TEST(SafeWrite, IsOneWrite) {
  const Pipe pipe;
  const std::string more(1 << 20, 'm');
  const ssize_t written = safe_write(pipe.in(), more.data(), more.size());
  EXPECT_GT(written, 0);
  EXPECT_LT(written, static_cast<ssize_t>(more.size()));
}

TEST(SafeWrite, OtherErrorsAreHandedBack) {
  EXPECT_EQ(safe_write(writing("/dev/full"), "x", 1), -1);
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_EQ(safe_write(-1, "x", 1), -1);
  EXPECT_EQ(errno, EBADF);
}

TEST(FullRead, FillsTheLengthOrEndsWithTheFile) {
  Appliance{}.file("/tmp/source", "0123456789");
  const int source = reading("/tmp/source");
  std::array<char, 16> buffer{};
  EXPECT_EQ(full_read(source, buffer.data(), 4), 4);
  EXPECT_STREQ(buffer.data(), "0123");
  EXPECT_EQ(full_read(source, buffer.data(), 16), 6);
  EXPECT_STREQ(buffer.data(), "456789");
  EXPECT_EQ(full_read(source, buffer.data(), 16), 0);
}

TEST(FullRead, ErrorAfterSomeBytesGivesTheirCount) {
  const Pipe pipe;
  ASSERT_EQ(::write(pipe.in(), "text", 4), 4);
  std::array<char, 8> buffer{};
  EXPECT_EQ(full_read(pipe.out(), buffer.data(), buffer.size()), 4);
  EXPECT_EQ(full_read(pipe.out(), buffer.data(), buffer.size()), -1);
}

TEST(FullRead, LengthZeroReadsNothing) {
  EXPECT_EQ(full_read(-1, nullptr, 0), 0);
}

TEST(FullWrite, ErrorAfterSomeBytesGivesTheirCount) {
  const Pipe pipe;
  const int capacity = ::fcntl(pipe.in(), F_GETPIPE_SZ);
  const std::string more(static_cast<std::size_t>(capacity) + 1, 'm');
  EXPECT_EQ(full_write(pipe.in(), more.data(), more.size()), capacity);
  errno = 0;
  EXPECT_EQ(full_write(pipe.in(), more.data(), more.size()), -1);
  EXPECT_EQ(errno, EAGAIN);
}

TEST(FullWrite, LengthZeroWritesNothing) {
  EXPECT_EQ(full_write(-1, nullptr, 0), 0);
}

} // namespace
} // namespace nasshare::tests
