// Numbers as decimal text.
#include "nasshare/catalogue.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <utility>

namespace nasshare::tests {
namespace {

TEST(Itoa, GivesTheDecimalText) {
  const std::pair<std::int32_t, const char *> rows[] = {
      {0, "0"},
      {7, "7"},
      {9, "9"},
      {10, "10"},
      {100, "100"},
      {-1, "-1"},
      {-9, "-9"},
      {-10, "-10"},
      {1234567890, "1234567890"},
      {-1203, "-1203"},
      {INT32_MAX, "2147483647"},
      {INT32_MIN, "-2147483648"},
  };
  for (const auto &[value, text] : rows) {
    EXPECT_STREQ(itoa(value), text);
  }
}

TEST(Itoa, OverwritesOneBuffer) {
  const char *first = itoa(-2147483647);
  EXPECT_STREQ(first, "-2147483647");
  EXPECT_EQ(itoa(42), first);
  EXPECT_STREQ(first, "42");
}

} // namespace
} // namespace nasshare::tests
