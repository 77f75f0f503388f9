// The characters that XML 1.0 can hold, in UTF-8 (RFC 3629), and the references that stand for them.
#include "base/xml_characters.h"

#include "base/xml_library.h"

#include <array>
#include <libxml/parserInternals.h>

namespace nasshare {
namespace {

bool is_xml_character(char32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

// 0 for a byte that begins no character.
std::size_t length_by_first_byte(unsigned char first) {
  return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

char32_t digit_value(char c) {
  return c >= '0' && c <= '9'   ? static_cast<char32_t>(c - '0')
         : c >= 'a' && c <= 'f' ? static_cast<char32_t>(c - 'a' + 10)
         : c >= 'A' && c <= 'F' ? static_cast<char32_t>(c - 'A' + 10)
                                : 99;
}

// The character of a reference "&#38;" or "&#x26;", by what stands behind the "#".
std::optional<char32_t> character_number(std::string_view digits) {
  char32_t base = 10;
  if (digits.starts_with('x')) {
    base = 16;
    digits.remove_prefix(1);
  }
  if (digits.empty()) {
    return std::nullopt;
  }
  char32_t code = 0;
  for (const char c : digits) {
    const auto digit = digit_value(c);
    if (digit >= base || code > 0x10FFFF) {
      return std::nullopt;
    }
    code = code * base + digit;
  }
  return is_xml_character(code) ? std::optional(code) : std::nullopt;
}

std::optional<char32_t> named_character(std::string_view name) {
  struct Entity {
    std::string_view name;
    char character;
  };
  constexpr std::array<Entity, 5> entities{
      {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
  for (const auto &entity : entities) {
    if (entity.name == name) {
      return static_cast<char32_t>(entity.character);
    }
  }
  return std::nullopt;
}

} // namespace

std::size_t xml_character_length(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const auto length = length_by_first_byte(first);
  if (length == 0 || length > text.size()) {
    return 0;
  }
  char32_t code = length == 1 ? first : first & (0x7FU >> length);
  for (const char byte : text.substr(1, length - 1)) {
    const auto bits = static_cast<unsigned char>(byte);
    if ((bits & 0xC0U) != 0x80U) {
      return 0;
    }
    code = (code << 6U) | (bits & 0x3FU);
  }
  constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
  return code >= smallest[length] && is_xml_character(code) ? length : 0;
}

bool can_xml_hold(std::string_view text) {
  while (!text.empty()) {
    const auto length = xml_character_length(text);
    if (length == 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

std::optional<XmlReference> reference_at(std::string_view markup) {
  const auto end = markup.starts_with('&') ? markup.find(';') : std::string_view::npos;
  if (end == std::string_view::npos) {
    return std::nullopt;
  }
  const auto name = markup.substr(1, end - 1);
  const auto character = name.starts_with('#') ? character_number(name.substr(1)) : named_character(name);
  return character ? std::optional(XmlReference{*character, end + 1}) : std::nullopt;
}

Text<5> utf8(char32_t character) {
  std::array<xmlChar, 5> bytes{};
  xmlCopyCharMultiByte(bytes.data(), static_cast<int>(character));
  return {as_text(bytes.data())};
}

bool holds_reference(std::string_view text) {
  for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
    if (reference_at(text.substr(at))) {
      return true;
    }
  }
  return false;
}

} // namespace nasshare
