// Building small XML documents: what becomes of texts that XML cannot hold as they are.
#include "base/xml_writer.h"

#include "base/decimal.h"
#include "base/text.h"
#include "base/xml_characters.h"

#include <array>
#include <libxml/parserInternals.h>

namespace nasshare {
namespace {

using Content = Text<3 * list_width>; // every byte of a list may become U+FFFD

// libxml2 hands out elements without a name and texts without a content when memory is short.
xmlNode *new_element_or_note(const char *name) {
  const QuietLibrary library;
  auto *const element = xmlNewNode(nullptr, as_xml(name));
  if (element != nullptr && element->name == nullptr) {
    xmlFreeNode(element);
    return nullptr;
  }
  return element;
}

XmlDocument empty_document_or_note() {
  const QuietLibrary library;
  return XmlDocument(xmlNewDoc(as_xml("1.0")));
}

void append_character(Content &content, char32_t code) {
  std::array<xmlChar, 5> bytes{};
  xmlCopyCharMultiByte(bytes.data(), static_cast<int>(code));
  content.append(as_text(bytes.data()));
}

// Takes the character at the front of the rest, or what stands for one that XML cannot hold.
void move_character(std::string_view &rest, Content &content) {
  const auto length = xml_character_length(rest);
  content.append(length == 0 ? "\xEF\xBF\xBD" : rest.substr(0, length));
  rest.remove_prefix(length == 0 ? 1 : length);
}

Content text_of(std::string_view markup) {
  Content content;
  while (!markup.empty()) {
    if (const auto reference = reference_at(markup)) {
      append_character(content, reference->character);
      markup.remove_prefix(reference->length);
    } else {
      move_character(markup, content);
    }
  }
  return content;
}

bool add_content(xmlNode *parent, const char *name, const Content &content) {
  auto *const element = add_element(parent, name);
  if (element == nullptr || content.is_empty()) {
    return element != nullptr; // an empty field is an empty element, without a text in it
  }
  auto *const text = new_text_or_note(element->doc, content.c_str());
  return text != nullptr && xmlAddChild(element, text) != nullptr;
}

} // namespace

XmlDocument new_xml_or_note(const char *root) {
  auto document = empty_document_or_note();
  auto *const element = document ? new_element_or_note(root) : nullptr;
  if (element == nullptr) {
    return nullptr;
  }
  xmlDocSetRootElement(document.get(), element);
  return document;
}

xmlNode *add_element(xmlNode *parent, const char *name) {
  auto *const element = new_element_or_note(name);
  return element == nullptr ? nullptr : xmlAddChild(parent, element);
}

xmlNode *new_text_or_note(xmlDoc *document, const char *content) {
  const QuietLibrary library;
  auto *const text = xmlNewDocText(document, as_xml(content));
  if (text != nullptr && text->content == nullptr) {
    xmlFreeNode(text);
    return nullptr;
  }
  return text;
}

bool add_text(xmlNode *parent, const char *name, std::string_view text) {
  Content content;
  while (!text.empty()) {
    move_character(text, content);
  }
  return add_content(parent, name, content);
}

bool add_markup(xmlNode *parent, const char *name, std::string_view markup) {
  return add_content(parent, name, text_of(markup));
}

void assign_markup(std::span<char> field, std::string_view markup) {
  assign(field, text_of(markup).view());
}

bool add_number(xmlNode *parent, const char *name, std::int32_t value) {
  return add_text(parent, name, decimal_text(value).view());
}

XmlText compose_or_note(xmlDoc *document) {
  const QuietLibrary library;
  xmlChar *bytes = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(document, &bytes, &size, "UTF-8", 1);
  XmlText text(bytes);
  return library.is_short_of_memory() ? nullptr : std::move(text);
}

} // namespace nasshare
