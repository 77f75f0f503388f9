// fix_path_special_char: backslashes before what the shell would take as its own.
#include "nasshare/smbconf.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {
namespace {

// Exactly the 4096 bytes that a path has.
class PathField {
public:
  explicit PathField(std::string_view text) : field_(4096, '\0') {
    std::copy(text.begin(), text.end(), field_.begin());
  }
  operator char *() { return field_.data(); }
  [[nodiscard]] std::string text() const { return field_.data(); }

private:
  std::vector<char> field_;
};

std::string escaped(std::string_view text) {
  PathField path(text);
  EXPECT_EQ(fix_path_special_char(path), static_cast<char *>(path));
  return path.text();
}

std::string pairs(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "\\(";
  }
  return text;
}

TEST(ShellEscape, EachSpecialCharacterGetsOneBackslash) {
  for (const char character : std::string_view("$`#%^&()+{};[]'= ")) {
    SCOPED_TRACE(character);
    EXPECT_EQ(escaped(std::string("/a") + character + "b"), std::string("/a\\") + character + "b");
  }
}

TEST(ShellEscape, AllTogetherInTheirPlaces) {
  EXPECT_EQ(escaped("/mnt/USB/usb1 (x)"), "/mnt/USB/usb1\\ \\(x\\)");
  EXPECT_EQ(escaped("$`#%^&()+{};[]'= "), "\\$\\`\\#\\%\\^\\&\\(\\)\\+\\{\\}\\;\\[\\]\\'\\=\\ ");
  EXPECT_EQ(escaped("  "), "\\ \\ ");
}

TEST(ShellEscape, WithoutASpecialCharacterNothingChangesAndTheResultIsNull) {
  for (const char *text : {"", "/", "/mnt/HD/HD_a2/music", "/\"\\!*?|<>~", "/a\tb\nc", "/b\u00fccher\xff",
                           "/-_.,:@/0123456789"}) {
    SCOPED_TRACE(text);
    PathField path(text);
    EXPECT_EQ(fix_path_special_char(path), nullptr);
    EXPECT_EQ(path.text(), text);
  }
}

TEST(ShellEscape, OtherCharactersOfTheShellStayBesideEscapedOnes) {
  EXPECT_EQ(escaped("\"a b\\ c!*?|<>~"), "\"a\\ b\\\\ c!*?|<>~");
}

TEST(ShellEscape, TwiceEscapesOnlyTheCharactersAgain) {
  PathField path("a b");
  fix_path_special_char(path);
  fix_path_special_char(path);
  EXPECT_EQ(path.text(), "a\\\\ b");
}

TEST(ShellEscape, TheResultStaysInItsField) {
  EXPECT_EQ(escaped("x" + std::string(2047, '(')), "x" + pairs(2047));
  EXPECT_EQ(escaped("x" + std::string(4094, '(')), "x" + pairs(2047));
}

TEST(ShellEscape, ABackslashIsNeverCutFromItsCharacter) {
  EXPECT_EQ(escaped(std::string(4095, '(')), pairs(2047));
}

TEST(ShellEscape, ACharacterIsNeverCut) {
  const std::string start = std::string(4092, 'x') + " ";
  EXPECT_EQ(escaped(start + "\u00e9"), std::string(4092, 'x') + "\\ ");
}

TEST(ShellEscape, NoPathIsNoPath) {
  EXPECT_EQ(fix_path_special_char(nullptr), nullptr);
}

} // namespace
} // namespace nasshare::tests
