// Building small XML documents and composing their text. Every null and false below means that memory is
// short, which is noted.
#pragma once

#include "base/xml_library.h"

#include <cstdint>

namespace nasshare {

// A new document with an empty root.
[[nodiscard]] XmlDocument new_xml_or_note(const char *root);

// Adds an empty child element.
[[nodiscard]] xmlNode *add_element(xmlNode *parent, const char *name);

// A text for an element of the document.
[[nodiscard]] xmlNode *new_text_or_note(xmlDoc *document, const char *content);

// Add a child element holding that text, whatever it is; bytes that XML cannot hold become U+FFFD.
[[nodiscard]] bool add_text(xmlNode *parent, const char *name, std::string_view text);
// The same for text that is handed over as markup: its references are what they stand for, and a "&" that
// begins none is a "&".
[[nodiscard]] bool add_markup(xmlNode *parent, const char *name, std::string_view markup);
[[nodiscard]] bool add_number(xmlNode *parent, const char *name, std::int32_t value);

// The document as text, indented, in UTF-8.
[[nodiscard]] XmlText compose_or_note(xmlDoc *document);

// Copies what the markup reads as into the field: its references are the characters that they mean.
void assign_markup(std::span<char> field, std::string_view markup);

} // namespace nasshare
