// Reading small XML files.
#pragma once

#include "base/xml_library.h"

#include <cstdint>
#include <span>

namespace nasshare {

// The parsed text; null when it is not well-formed, declares entities of its own, or memory is short, which
// is noted.
[[nodiscard]] XmlDocument parse_or_note(std::string_view text);

// Whether parse_or_note() has a document for the text, found out without one.
[[nodiscard]] bool is_well_formed_or_note(std::string_view text);

// The parsed file; null too when it is missing or no regular file. That it cannot be read is noted.
[[nodiscard]] XmlDocument load_or_note(const char *path);

// The root element; null for a null document.
xmlNode *root_of(const XmlDocument &document);

// Whether the element bears that name; false for null.
bool is_named(const xmlNode *element, std::string_view name);

// The first child element of that name; null when there is none, and for a null parent.
xmlNode *child_element(xmlNode *parent, const char *name);

// This element or the first one behind it; comments and stray text are none. Null at the end.
xmlNode *element_from(xmlNode *node);

// The text content of a child element, for as long as the document stays; empty when there is none. A
// shortage of memory is noted.
class ChildText {
public:
  ChildText(xmlNode *parent, const char *name);
  [[nodiscard]] std::string_view view() const { return view_; }
  [[nodiscard]] std::int32_t number() const; // as decimal()

private:
  std::string_view view_;
  XmlText text_; // of content that is not one text in the tree
};

// Copies the text content of a child element into the field, cut to its width.
void read_child(xmlNode *parent, const char *name, std::span<char> field);

} // namespace nasshare
