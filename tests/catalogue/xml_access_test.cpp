// Looking up an element of a parsed XML file, and giving the file back.
#include "fields.h"
#include "nasshare/catalogue.h"
#include "output.h"

#include <cstring>
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <string>
#include <utility>

namespace nasshare::tests {
namespace {

class Document {
public:
  explicit Document(const std::string &text)
      : document_(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                XML_PARSE_NOBLANKS | XML_PARSE_NODICT)) {}
  Document(const Document &) = delete;
  Document &operator=(const Document &) = delete;
  ~Document() { free_xml_memory(document_); }

  [[nodiscard]] xmlNode *root() const { return xmlDocGetRootElement(document_); }

private:
  xmlDoc *document_;
};

// The text of the child in a buffer of that width.
std::string text_of(const Document &document, const char *name, int size = 64) {
  std::string buffer(128, '~');
  search_xml_children(document.root(), name, buffer.data(), size);
  EXPECT_EQ(buffer.substr(static_cast<std::size_t>(size)),
            std::string(buffer.size() - static_cast<std::size_t>(size), '~'));
  return buffer.c_str();
}

TEST(SearchXmlChildren, FindsTheFirstChildOfThatName) {
  const Document document("<item><a/><name>first</name><name>second</name></item>");
  char text[16] = "before";
  xmlNode *found = search_xml_children(document.root(), "name", text, sizeof text);
  EXPECT_EQ(found, document.root()->children->next);
  EXPECT_STREQ(text, "first");
}

TEST(SearchXmlChildren, FindsWithoutABuffer) {
  const Document document("<item><a/><b/></item>");
  EXPECT_EQ(search_xml_children(document.root(), "b", nullptr, 0), document.root()->last);
  EXPECT_EQ(search_xml_children(document.root(), "b", nullptr, 64), document.root()->last);
}

TEST(SearchXmlChildren, LooksAtElementsOneLevelDownOnly) {
  const Document document(
      "<item><!--name--><?name x?>name<box><name>deep</name></box><Name>case</Name></item>");
  char text[16] = "before";
  EXPECT_EQ(search_xml_children(document.root(), "name", text, sizeof text), nullptr);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(search_xml_children(document.root(), "item", text, sizeof text), nullptr);
  EXPECT_EQ(search_xml_children(document.root(), "", text, sizeof text), nullptr);
}

TEST(SearchXmlChildren, GivesTheWholeTextContent) {
  const Document document("<item>"
                          "<plain>a b</plain>"
                          "<decoded>&lt;R&amp;D&gt; &#228;</decoded>"
                          "<escaped>R&amp;amp;D</escaped>"
                          "<nested>one<b>two</b><!--no-->three</nested>"
                          "<cdata><![CDATA[<&>]]></cdata>"
                          "<empty/>"
                          "</item>");
  const std::pair<const char *, const char *> rows[] = {
      {"plain", "a b"},       {"decoded", "<R&D> \xC3\xA4"},
      {"escaped", "R&amp;D"}, {"nested", "onetwothree"},
      {"cdata", "<&>"},       {"empty", ""},
      {"absent", ""},
  };
  for (const auto &[name, text] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(text_of(document, name), text);
  }
}

TEST(SearchXmlChildren, ZeroFillsTheBuffer) {
  const Document document("<item><name>abc</name></item>");
  for (const char *name : {"name", "absent"}) {
    SCOPED_TRACE(name);
    char text[12];
    std::memset(text, '~', sizeof text);
    search_xml_children(document.root(), name, text, 10);
    EXPECT_EQ(std::string(text + 3, 7), std::string(7, '\0'));
    EXPECT_EQ(std::string(text + 10, 2), "~~");
  }
}

TEST(SearchXmlChildren, CutsBetweenCharactersAndEntities) {
  const Document document("<item><name>abc\xC3\xA4\xE2\x82\xAC</name><markup>abc&amp;amp;d</markup></item>");
  const struct {
    const char *name;
    int size;
    const char *text;
  } rows[] = {
      {"name", 9, "abc\xC3\xA4\xE2\x82\xAC"},
      {"name", 8, "abc\xC3\xA4"},
      {"name", 6, "abc\xC3\xA4"},
      {"name", 5, "abc"},
      {"name", 2, "a"},
      {"name", 1, ""},
      {"markup", 10, "abc&amp;d"},
      {"markup", 9, "abc&amp;"},
      {"markup", 8, "abc"},
      {"markup", 5, "abc"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.name) + " in " + std::to_string(row.size));
    EXPECT_EQ(text_of(document, row.name, row.size), row.text);
  }
}

TEST(SearchXmlChildren, WritesNothingIntoABufferWithoutRoom) {
  const Document document("<item><name>abc</name></item>");
  char text[4] = "~~~";
  for (const int size : {0, -1, -2147483647}) {
    EXPECT_EQ(search_xml_children(document.root(), "name", text, size), document.root()->children);
    EXPECT_STREQ(text, "~~~");
  }
}

TEST(SearchXmlChildren, AnswersNoneForMissingArguments) {
  const Document document("<item><name>abc</name></item>");
  char text[8] = "before";
  EXPECT_EQ(search_xml_children(nullptr, "name", text, sizeof text), nullptr);
  EXPECT_STREQ(text, "");
  put(text, "before");
  EXPECT_EQ(search_xml_children(document.root(), nullptr, text, sizeof text), nullptr);
  EXPECT_STREQ(text, "");
}

TEST(SearchXmlChildren, TakesElementsWithoutChildren) {
  const Document document("<item/>");
  EXPECT_EQ(search_xml_children(document.root(), "name", nullptr, 0), nullptr);
}

TEST(FreeXmlMemory, LeavesTheParserUsable) {
  Captured captured;
  free_xml_memory(nullptr);
  for (int i = 0; i < 3; ++i) {
    const Document document("<item><name>abc</name></item>");
    EXPECT_EQ(text_of(document, "name"), "abc");
  }
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(captured.err(), "");
}

} // namespace
} // namespace nasshare::tests
