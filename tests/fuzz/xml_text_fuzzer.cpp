// A text: put into a document as text and as markup, and read back.
#include "fuzz.h"

#include "base/xml_characters.h"
#include "base/xml_reader.h"
#include "base/xml_writer.h"
#include "nasshare/catalogue.h"

#include <cstring>
#include <memory>
#include <optional>

namespace nasshare::fuzzing {
namespace {

using Add = bool (*)(xmlNode *parent, const char *name, std::string_view text);

// The text of the element after a document with it has been written and read.
std::string stored_and_read(Add add, std::string_view text) {
  auto document = new_xml_or_note("config");
  require(add(xmlDocGetRootElement(document.get()), "value", text), "the text is taken");
  auto composed = compose_or_note(document.get());
  auto read = parse_or_note(view(composed));
  require(read != nullptr, "what is written can be read");
  auto *root = xmlDocGetRootElement(read.get());
  require(child_element(root, "value") != nullptr, "the element is there");
  return std::string(ChildText(root, "value").view());
}

// What the XML parser itself makes of the markup; none unless it is plain content.
std::optional<std::string> parsed(std::string_view markup) {
  if (markup.find_first_of("<\r") != std::string_view::npos) {
    return std::nullopt;
  }
  auto document = parse_or_note("<a><b>" + std::string(markup) + "</b></a>");
  if (!document) {
    return std::nullopt;
  }
  return std::string(ChildText(xmlDocGetRootElement(document.get()), "b").view());
}

void require_escaping(const std::string &text) {
  auto field = std::make_unique<char[]>(path_width);
  assign({field.get(), path_width}, text);
  auto plain = std::string(field.get());
  convert_xml_special_char(field.get());
  auto escaped = std::string(field.get());
  require(escaped.size() < path_width, "an escaped text ends within its field");
  recover_special_char(field.get());
  require(plain.starts_with(field.get()), "what was escaped is recovered");
  require(escaped.size() + 5 > path_width - 1 || plain == field.get(), "and nothing is lost");
}

} // namespace

void fuzz(std::string_view input) {
  auto text = std::string(input).c_str() + std::string();
  auto read = stored_and_read(add_text, text);
  require(can_xml_hold(read), "what is read is what XML can hold");
  if (can_xml_hold(text)) {
    require(read == text, "a text comes back as it was");
  }
  auto value = stored_and_read(add_markup, text);
  if (auto expected = parsed(text)) {
    require(value == *expected, "markup means what it means to the parser");
  }
  require_escaping(text);
}

} // namespace nasshare::fuzzing
