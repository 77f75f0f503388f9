// Cutting the end of a line.
#include "nasshare/support.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string cut(std::string text) {
  remove_0D_0A(text.data());
  text.resize(std::strlen(text.data()));
  return text;
}

TEST(LineEnd, TrailingWhiteSpaceAndControlCharactersGo) {
  const struct {
    const char *text;
    const char *kept;
  } rows[] = {
      {"md1 \r\n", "md1"},
      {"\r\n", ""},
      {"", ""},
      {" ", ""},
      {"x", "x"},
      {" md1", " md1"},
      {"\t md1\t", "\t md1"},
      {"a\r\nb\r\n", "a\r\nb"},
      {"a\x01\x7f\x1b", "a"},
      {"a\v\f\b\a", "a"},
      {"a \x01 b \x01 ", "a \x01 b"},
      {"Caf\xC3\xA9\n", "Caf\xC3\xA9"},
      {"a\xC2\xA0", "a\xC2\xA0"},
      {"a\xC2\x85", "a\xC2\x85"},
      {"a\xFF\n", "a\xFF"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(cut(row.text), row.kept);
  }
}

TEST(LineEnd, EveryByteIsOfOneKind) {
  for (int byte = 1; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    const std::string text{'a', static_cast<char>(byte)};
    const bool goes = byte <= 0x20 || byte == 0x7f;
    EXPECT_EQ(cut(text), goes ? "a" : text);
  }
}

TEST(LineEnd, CutCharactersBecomeZeros) {
  std::string text = "md1 \t\r\n";
  remove_0D_0A(text.data());
  EXPECT_EQ(text, std::string("md1\0\0\0\0", 7));
}

TEST(LineEnd, LongTextIsCutWhole) {
  EXPECT_EQ(cut(std::string(5000, 'x') + std::string(5000, ' ')), std::string(5000, 'x'));
  EXPECT_EQ(cut(std::string(5000, '\n')), "");
}

TEST(LineEnd, NothingIsReadInFrontOfTheText) {
  char around[] = " \r\n\0 \r\n";
  remove_0D_0A(around + 4);
  EXPECT_EQ(std::string(around, 4), std::string(" \r\n\0", 4));
  EXPECT_STREQ(around + 4, "");
}

TEST(LineEnd, MissingTextIsLeftAlone) {
  remove_0D_0A(nullptr);
}

} // namespace
} // namespace nasshare::tests
