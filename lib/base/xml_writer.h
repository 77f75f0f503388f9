// Building and changing small XML trees, and composing their text. Every null below means that memory is
// short, which is noted.
#pragma once

#include "base/xml_library.h"

namespace nasshare {

// A new document with an empty root.
[[nodiscard]] XmlDocument new_xml_or_note(const char *root);

// Adds an empty child element.
[[nodiscard]] xmlNode *add_element(xmlNode *parent, const char *name);

// A text for an element of the document.
[[nodiscard]] xmlNode *new_text_or_note(xmlDoc *document, const char *content);

// The document as text, indented, in UTF-8.
[[nodiscard]] XmlText compose_or_note(xmlDoc *document);

} // namespace nasshare
