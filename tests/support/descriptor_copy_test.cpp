// copyfd_eof: copying between open descriptors.
#include "appliance.h"
#include "descriptors.h"
#include "nasshare/support.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace nasshare::tests {
namespace {

struct CopyResult {
  std::int64_t result;
  std::string text;

  bool operator==(const CopyResult &) const = default;
};

// Copies from a file of that many bytes, with that limit.
CopyResult copied(std::size_t size, std::int64_t limit) {
  Appliance{}.file("/tmp/source", std::string(size, 's'));
  const std::int64_t result = copyfd_eof(reading("/tmp/source"), writing("/tmp/target"), limit);
  return {result, read_file("/tmp/target")};
}

TEST(DescriptorCopy, LimitZeroCopiesToTheEnd) {
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 100000U}) {
    SCOPED_TRACE(size);
    EXPECT_EQ(copied(size, 0), (CopyResult{static_cast<std::int64_t>(size), std::string(size, 's')}));
  }
}

TEST(DescriptorCopy, LimitIsNotExceeded) {
  for (const std::size_t limit : {1U, 4095U, 4096U, 4097U, 8192U, 9999U, 10000U}) {
    SCOPED_TRACE(limit);
    EXPECT_EQ(copied(10000, static_cast<std::int64_t>(limit)),
              (CopyResult{static_cast<std::int64_t>(limit), std::string(limit, 's')}));
  }
}

TEST(DescriptorCopy, LimitBeyondTheEndCopiesWhatIsThere) {
  EXPECT_EQ(copied(5000, 5001), (CopyResult{5000, std::string(5000, 's')}));
  EXPECT_EQ(copied(5000, std::int64_t{1} << 40), (CopyResult{5000, std::string(5000, 's')}));
}

TEST(DescriptorCopy, SourceIsReadNoFurtherThanTheLimit) {
  Appliance{}.file("/tmp/source", std::string(10000, 's'));
  const int source = reading("/tmp/source");
  EXPECT_EQ(copyfd_eof(source, -1, 5000), 5000);
  EXPECT_EQ(::lseek(source, 0, SEEK_CUR), 5000);
}

TEST(DescriptorCopy, CopyGoesOnWhereTheLastOneEnded) {
  Appliance{}.file("/tmp/source", "first,second");
  const int source = reading("/tmp/source");
  const int target = writing("/tmp/target");
  EXPECT_EQ(copyfd_eof(source, target, 6), 6);
  EXPECT_EQ(copyfd_eof(source, target, 0), 6);
  EXPECT_EQ(read_file("/tmp/target"), "first,second");
}

TEST(DescriptorCopy, NegativeDestinationReadsAndDiscards) {
  Appliance{}.file("/tmp/source", std::string(10000, 's'));
  const int source = reading("/tmp/source");
  EXPECT_EQ(copyfd_eof(source, -1, 0), 10000);
  EXPECT_EQ(copyfd_eof(source, -1, 0), 0);
}

TEST(DescriptorCopy, NegativeSourceFails) {
  EXPECT_EQ(copyfd_eof(-1, writing("/tmp/target"), 0), -1);
  EXPECT_EQ(copyfd_eof(-1, -1, 0), -1);
}

TEST(DescriptorCopy, ReadErrorFails) {
  EXPECT_EQ(copyfd_eof(reading("/tmp"), writing("/tmp/target"), 0), -1);
  EXPECT_EQ(read_file("/tmp/target"), "");
}

TEST(DescriptorCopy, ReadErrorAfterSomeBytesFails) {
  const Pipe pipe;
  ASSERT_EQ(::write(pipe.in(), "some", 4), 4);
  EXPECT_EQ(copyfd_eof(pipe.out(), writing("/tmp/target"), 0), -1);
  EXPECT_EQ(read_file("/tmp/target"), "some");
}

TEST(DescriptorCopy, WriteErrorFails) {
  Appliance{}.file("/tmp/source", "text").file("/tmp/target", "");
  EXPECT_EQ(copyfd_eof(reading("/tmp/source"), writing("/dev/full"), 0), -1);
  EXPECT_EQ(copyfd_eof(reading("/tmp/source"), reading("/tmp/target"), 0), -1);
}

TEST(DescriptorCopy, ShortWriteFails) {
  Appliance{}.file("/tmp/source", std::string(100000, 's'));
  const Pipe pipe;
  EXPECT_EQ(copyfd_eof(reading("/tmp/source"), pipe.in(), 0), -1) << "a pipe holds less";
}

TEST(DescriptorCopy, EmptySourceWritesNothing) {
  EXPECT_EQ(copyfd_eof(reading("/dev/null"), writing("/dev/full"), 0), 0);
}

} // namespace
} // namespace nasshare::tests
