// The characters that XML can hold, and the references that stand for them.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace nasshare {

// Length in bytes of the UTF-8 character (RFC 3629) at the start of the text, which is not empty, when XML
// 1.0 allows it (section 2.2 of the recommendation), else 0.
std::size_t xml_character_length(std::string_view text);

// Whether XML can hold the text: UTF-8 without control characters other than tab, line feed, carriage return.
bool can_xml_hold(std::string_view text);

struct XmlReference {
  char32_t character;
  std::size_t length; // from "&" to ";"
};

// The reference at the start of the markup; none unless it is one of the five that XML knows or the number of
// a character that it allows (section 4.1 of the recommendation).
std::optional<XmlReference> reference_at(std::string_view markup);

// The character in UTF-8 (RFC 3629).
Text<5> utf8(char32_t character);

// Whether the text, taken as markup, would read as another one.
bool holds_reference(std::string_view text);

} // namespace nasshare
