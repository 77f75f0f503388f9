// Where a text may be cut, and how the words of a line are taken.
#include "base/text.h"

#include <cstring>

namespace nasshare {
namespace {

constexpr std::size_t longest_entity = 12; // "&#x0010FFFF;"

bool continues_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

bool is_entity_letter(char c) {
  return c == '#' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::size_t before_cut_character(std::string_view text, std::size_t end) {
  auto start = end;
  while (start > 0 && end - start < 3 && continues_character(text[start])) {
    --start;
  }
  return continues_character(text[start]) ? end : start;
}

std::size_t before_cut_entity(std::string_view text, std::size_t end) {
  const auto from = end < longest_entity ? 0 : end - longest_entity;
  const auto start = text.substr(0, end).find_last_of('&');
  if (start == std::string_view::npos || start < from) {
    return end;
  }
  auto stop = start + 1;
  while (stop < text.size() && is_entity_letter(text[stop])) {
    ++stop;
  }
  const bool is_cut = stop >= end && stop < text.size() && text[stop] == ';';
  return is_cut ? start : end;
}

bool is_space_or_control(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code <= ' ' || code == 0x7F;
}

std::string_view without_space_before(std::string_view text) {
  return {std::ranges::find_if_not(text, is_space), text.end()};
}

} // namespace

std::string_view view(std::span<const char> field) {
  return {field.data(), strnlen(field.data(), field.size())};
}

std::string_view cut_text(std::string_view text, std::size_t room) {
  if (text.size() <= room) {
    return text;
  }
  return text.substr(0, before_cut_entity(text, before_cut_character(text, room)));
}

void place(std::span<char> field, std::string_view text) {
  if (!text.empty()) {
    std::memmove(field.data(), text.data(), text.size());
  }
  field[text.size()] = '\0';
}

void assign(std::span<char> field, std::string_view text) {
  place(field, cut_text(text, field.size() - 1));
}

bool equals_ignoring_case(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::string_view trimmed(std::string_view text) {
  text = without_space_before(text);
  while (!text.empty() && is_space(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string_view without_line_end(std::string_view text) {
  while (!text.empty() && is_space_or_control(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string_view take_word(std::string_view &line) {
  line = without_space_before(line);
  const std::string_view word(line.begin(), std::ranges::find_if(line, is_space));
  line.remove_prefix(word.size());
  return word;
}

bool take(std::string_view &line, std::string_view text) {
  const auto rest = without_space_before(line);
  if (!rest.starts_with(text)) {
    return false;
  }
  line = rest.substr(text.size());
  return true;
}

} // namespace nasshare
