// fix_path_special_char: backslashes before what the shell would take as its own.
#include "fields.h"
#include "nasshare/smbconf.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string shell_escaped(std::string_view text) {
  PathField path(text);
  EXPECT_EQ(fix_path_special_char(path), static_cast<char *>(path));
  return path.text();
}

TEST(ShellEscape, EachSpecialCharacterGetsOneBackslash) {
  for (const char character : std::string_view("$`#%^&()+{};[]'= ")) {
    SCOPED_TRACE(character);
    EXPECT_EQ(shell_escaped(std::string("/a") + character + "b"), std::string("/a\\") + character + "b");
  }
}

TEST(ShellEscape, AllTogetherInTheirPlaces) {
  EXPECT_EQ(shell_escaped("/mnt/USB/usb1 (x)"), "/mnt/USB/usb1\\ \\(x\\)");
  EXPECT_EQ(shell_escaped("$`#%^&()+{};[]'= "), "\\$\\`\\#\\%\\^\\&\\(\\)\\+\\{\\}\\;\\[\\]\\'\\=\\ ");
  EXPECT_EQ(shell_escaped("  "), "\\ \\ ");
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
  EXPECT_EQ(shell_escaped("\"a b\\ c!*?|<>~"), "\"a\\ b\\\\ c!*?|<>~");
}

TEST(ShellEscape, TwiceEscapesOnlyTheCharactersAgain) {
  PathField path("a b");
  fix_path_special_char(path);
  fix_path_special_char(path);
  EXPECT_EQ(path.text(), "a\\\\ b");
}

TEST(ShellEscape, TheResultStaysInItsField) {
  EXPECT_EQ(shell_escaped("x" + std::string(2047, '(')), "x" + repeated("\\(", 2047));
  EXPECT_EQ(shell_escaped("x" + std::string(4094, '(')), "x" + repeated("\\(", 2047));
}

TEST(ShellEscape, ABackslashIsNeverCutFromItsCharacter) {
  EXPECT_EQ(shell_escaped(std::string(4095, '(')), repeated("\\(", 2047));
}

TEST(ShellEscape, ACharacterIsNeverCut) {
  const std::string start = std::string(4092, 'x') + " ";
  EXPECT_EQ(shell_escaped(start + "\u00e9"), std::string(4092, 'x') + "\\ ");
}

TEST(ShellEscape, NoPathIsNoPath) {
  EXPECT_EQ(fix_path_special_char(nullptr), nullptr);
}

} // namespace
} // namespace nasshare::tests
