// "&" to "&amp;" and back.
#include "nasshare/catalogue.h"
#include "text.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace nasshare::tests {
namespace {

// A buffer as wide as the operations may use, with a guard behind it.
class Buffer {
public:
  explicit Buffer(const std::string &text) {
    bytes_.fill('~');
    std::memcpy(bytes_.data(), text.c_str(), text.size() + 1);
  }
  char *text() { return bytes_.data(); }
  [[nodiscard]] std::string behind(std::size_t width) const { return {bytes_.data() + width, 8}; }

private:
  std::array<char, 16384> bytes_;
};

std::string converted(const std::string &text) {
  Buffer buffer(text);
  convert_xml_special_char(buffer.text());
  return buffer.text();
}

std::string recovered(const std::string &text) {
  Buffer buffer(text);
  recover_special_char(buffer.text());
  return buffer.text();
}

TEST(ConvertXmlSpecialChar, EscapesEveryAmpersand) {
  const std::pair<const char *, const char *> rows[] = {
      {"", ""},
      {"Music", "Music"},
      {"R&D", "R&amp;D"},
      {"&", "&amp;"},
      {"&&", "&amp;&amp;"},
      {"&front and back&", "&amp;front and back&amp;"},
      {"R&amp;D", "R&amp;amp;D"},
      {"&lt;", "&amp;lt;"},
      {"<a href=\"b\">'c'</a>", "<a href=\"b\">'c'</a>"},
      {"\xC3\xA4 & \xE2\x82\xAC", "\xC3\xA4 &amp; \xE2\x82\xAC"},
  };
  for (const auto &[text, result] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(converted(text), result);
  }
}

TEST(ConvertXmlSpecialChar, FillsAtMost4095Bytes) {
  EXPECT_EQ(converted(repeated("&", 819)), repeated("&amp;", 819));
  EXPECT_EQ(converted(repeated("&", 820)), repeated("&amp;", 819));
  EXPECT_EQ(converted(repeated("&", 4095)), repeated("&amp;", 819));
  EXPECT_EQ(converted("&" + std::string(4090, 'x')), "&amp;" + std::string(4090, 'x'));
  EXPECT_EQ(converted("&" + std::string(4091, 'x')), "&amp;" + std::string(4090, 'x'));

  Buffer buffer(repeated("&", 4095));
  convert_xml_special_char(buffer.text());
  EXPECT_EQ(buffer.behind(4096), "~~~~~~~~");
}

TEST(ConvertXmlSpecialChar, CutsBetweenCharactersAndEntities) {
  EXPECT_EQ(converted("x" + repeated("&", 4094)), "x" + repeated("&amp;", 818));
  EXPECT_EQ(converted("&" + std::string(4088, 'x') + "\xE2\x82\xAC"), "&amp;" + std::string(4088, 'x'));
  EXPECT_EQ(converted("&" + std::string(4087, 'x') + "\xE2\x82\xAC"),
            "&amp;" + std::string(4087, 'x') + "\xE2\x82\xAC");
}

TEST(ConvertXmlSpecialChar, LeavesLongTextWithoutAmpersandsUntouched) {
  EXPECT_EQ(converted(std::string(12287, 'x')), std::string(12287, 'x'));
}

TEST(ConvertXmlSpecialChar, WorksInAnyBufferThatHoldsTheResult) {
  char small[6] = "&";
  convert_xml_special_char(small);
  EXPECT_STREQ(small, "&amp;");
  char tight[] = "none";
  convert_xml_special_char(tight);
  EXPECT_STREQ(tight, "none");
}

TEST(RecoverSpecialChar, RestoresEveryAmpersandOnce) {
  const std::pair<const char *, const char *> rows[] = {
      {"", ""},
      {"Music", "Music"},
      {"R&amp;D", "R&D"},
      {"&amp;", "&"},
      {"&amp;&amp;", "&&"},
      {"&amp;front and back&amp;", "&front and back&"},
      {"R&amp;amp;D", "R&amp;D"},
      {"&am&amp;p;", "&am&p;"},
      {"&&amp;amp;", "&&amp;"},
      {"R&D", "R&D"},
      {"&amp", "&amp"},
      {"&AMP;&lt;&gt;&#38;", "&AMP;&lt;&gt;&#38;"},
      {"\xC3\xA4&amp;\xE2\x82\xAC", "\xC3\xA4&\xE2\x82\xAC"},
  };
  for (const auto &[text, result] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(recovered(text), result);
  }
}

TEST(RecoverSpecialChar, TakesTextOfAnyLength) {
  EXPECT_EQ(recovered(repeated("&amp;", 2457)), repeated("&", 2457));
  EXPECT_EQ(recovered(std::string(12000, 'x') + "&amp;y"), std::string(12000, 'x') + "&y");
}

TEST(RecoverSpecialChar, UsesNoMoreThanTheTextItself) {
  char tight[] = "a&amp;b";
  recover_special_char(tight);
  EXPECT_STREQ(tight, "a&b");
}

TEST(XmlSpecialChar, EveryTextComesBack) {
  for (const std::string text : {"R&D", "&amp;", "&amp;amp;", "&&&", "&lt;&#38;", "plain"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(recovered(converted(text)), text);
  }
}

TEST(XmlSpecialChar, MissingTextIsLeftAlone) {
  convert_xml_special_char(nullptr);
  recover_special_char(nullptr);
}

} // namespace
} // namespace nasshare::tests
