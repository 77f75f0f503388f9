// Reading and writing small XML files with libxml2.
#pragma once

#include "nasshare/catalogue.h"

#include <cstdint>
#include <libxml/tree.h>
#include <memory>
#include <span>
#include <string_view>

namespace nasshare {

struct FreeDocument {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
};
using XmlDocument = std::unique_ptr<xmlDoc, FreeDocument>;

// The parsed file, or null when it is missing, no regular file or not well-formed. Nothing is printed.
XmlDocument load_xml(const char *path);

// The parsed text, or null when it is not well-formed or memory is short; the latter is noted as trouble.
XmlDocument parse_xml(std::string_view text);

// The first child element of that name, or null; null for a null parent.
xmlNode *child_element(xmlNode *parent, const char *name);

// This element or the first one behind it; comments and stray text are none. Null at the end.
xmlNode *element_from(xmlNode *node);

struct FreeXmlText {
  void operator()(xmlChar *text) const { xmlFree(text); }
};
using XmlText = std::unique_ptr<xmlChar, FreeXmlText>;

// The characters of a text of libxml2's; empty for none.
inline std::string_view view(const XmlText &text) {
  return text ? reinterpret_cast<const char *>(text.get()) : "";
}

// The text content of a child element; empty when there is none.
class ChildText {
public:
  ChildText(xmlNode *parent, const char *name);
  [[nodiscard]] std::string_view view() const { return nasshare::view(text_); }
  [[nodiscard]] std::int32_t number() const; // as decimal()

private:
  XmlText text_;
};

void read_child(xmlNode *parent, const char *name, std::span<char> field);
void read_child_list(xmlNode *parent, const char *name, std::span<char> field);

// A new document with an empty root, or null when memory is short.
XmlDocument new_xml(const char *root);

// Adds an empty child element; null when memory is short.
xmlNode *add_element(xmlNode *parent, const char *name);

// A text for an element of the document; null when memory is short.
xmlNode *new_text(xmlDoc *document, const char *content);

// Add a child element holding that text, whatever it is; bytes that XML cannot hold become U+FFFD. False
// when memory is short.
bool add_text(xmlNode *parent, const char *name, std::string_view text);
// The same for text that is handed over as markup: its references are what they stand for, and a "&" that
// begins none is a "&".
bool add_markup(xmlNode *parent, const char *name, std::string_view markup);
bool add_number(xmlNode *parent, const char *name, std::int32_t value);

// The document as text, indented, in UTF-8; null when memory is short.
XmlText compose_xml(xmlDoc *document);

// Gives a file with records that is not well-formed a second name, NAME.bad, before its successor takes the
// first: what a failing disk has left of it may be all that is left.
void keep_broken_xml_aside(const char *path);

// Replaces the file with the document, indented, in UTF-8. False, and the old file untouched, on failure.
bool store_xml(xmlDoc *document, const char *path);

// Whether XML can hold the text: UTF-8 without control characters other than tab, line feed, carriage return.
bool xml_can_hold(std::string_view text);

} // namespace nasshare
