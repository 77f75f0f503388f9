// A text: put into a document as text and as markup, and read back.
#include "fuzz.h"

#include "base/xml_characters.h"
#include "base/xml_composer.h"
#include "base/xml_reader.h"
#include "base/xml_writer.h"
#include "nasshare/catalogue.h"

#include <cstring>
#include <memory>
#include <optional>

namespace nasshare::fuzzing {
namespace {

// The same bytes as libxml2 has for a tree of these elements.
void require_libxml2s_form(std::string_view composed, const std::string &content) {
  auto document = new_xml_or_note("config");
  auto *value = add_element(add_element(xmlDocGetRootElement(document.get()), "outer"), "value");
  if (!content.empty()) {
    xmlAddChild(value, new_text_or_note(document.get(), content.c_str()));
  }
  auto text = compose_or_note(document.get());
  require(view(text) == composed, "a document has the form that libxml2 gives it");
}

// The text of the element after a document with it has been written and read.
std::string stored_and_read(Form form, std::string_view text) {
  XmlComposer composer("config");
  composer.open("outer");
  composer.add("value", text, form);
  require(composer.finish(), "the text is taken");
  auto read = parse_or_note(composer.text());
  require(read != nullptr, "what is written can be read");
  require(is_well_formed_or_note(composer.text()), "and is known for it");
  auto *outer = child_element(xmlDocGetRootElement(read.get()), "outer");
  require(child_element(outer, "value") != nullptr, "the element is there");
  auto content = std::string(ChildText(outer, "value").view());
  require_libxml2s_form(composer.text(), content);
  return content;
}

// What the XML parser itself makes of the markup; none unless it is plain content.
std::optional<std::string> parsed(std::string_view markup) {
  if (markup.find_first_of("<\r") != std::string_view::npos) {
    return std::nullopt;
  }
  auto text = "<a><b>" + std::string(markup) + "</b></a>";
  auto document = parse_or_note(text);
  require(is_well_formed_or_note(text) == (document != nullptr), "well-formed is what can be parsed");
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
  require(is_well_formed_or_note(input) == (parse_or_note(input) != nullptr),
          "well-formed is what can be parsed");
  auto text = std::string(input).c_str() + std::string();
  auto read = stored_and_read(Form::text, text);
  require(can_xml_hold(read), "what is read is what XML can hold");
  if (can_xml_hold(text)) {
    require(read == text, "a text comes back as it was");
  }
  auto value = stored_and_read(Form::markup, text);
  if (auto expected = parsed(text)) {
    require(value == *expected, "markup means what it means to the parser");
  }
  require_escaping(text);
}

} // namespace nasshare::fuzzing
