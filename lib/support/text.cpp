#include "support/text.h"

#include <algorithm>
#include <array>
#include <charconv>
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
  auto from = end < longest_entity ? 0 : end - longest_entity;
  auto start = text.substr(0, end).find_last_of('&');
  if (start == std::string_view::npos || start < from) {
    return end;
  }
  auto stop = start + 1;
  while (stop < text.size() && is_entity_letter(text[stop])) {
    ++stop;
  }
  bool cut = stop >= end && stop < text.size() && text[stop] == ';';
  return cut ? start : end;
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

std::string_view cut_list(std::string_view list, std::size_t room) {
  if (list.size() <= room) {
    return list;
  }
  auto comma = list.substr(0, room + 1).find_last_of(',');
  // An entry that alone is longer than a list names no account. It must not vanish either: a share whose
  // lists are all empty is open to everyone.
  return comma == std::string_view::npos || comma == 0 ? cut_text(list, room) : list.substr(0, comma);
}

namespace {

void place(std::span<char> field, std::string_view text) {
  if (!text.empty()) {
    std::memmove(field.data(), text.data(), text.size());
  }
  field[text.size()] = '\0';
}

} // namespace

void assign(std::span<char> field, std::string_view text) {
  place(field, cut_text(text, field.size() - 1));
}

void assign_list(std::span<char> field, std::string_view list) {
  place(field, cut_list(list, field.size() - 1));
}

bool equals_ignoring_case(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::string_view take_word(std::string_view &line) {
  auto start = std::ranges::find_if_not(line, is_space);
  auto stop = std::find_if(start, line.end(), is_space);
  std::string_view word(start, stop);
  line = std::string_view(stop, line.end());
  return word;
}

namespace {

struct Number {
  std::int32_t value = 0;
  std::size_t length = 0; // up to the last digit; 0 when there is no number
  bool fits = true;
};

Number read_number(std::string_view text) {
  auto start = static_cast<std::size_t>(std::ranges::find_if_not(text, is_space) - text.begin());
  bool negative = start < text.size() && text[start] == '-';
  if (start < text.size() && text[start] == '+' && start + 1 < text.size() && text[start + 1] != '-') {
    ++start;
  }
  Number number;
  auto [stop, error] = std::from_chars(text.data() + start, text.data() + text.size(), number.value);
  if (error == std::errc::invalid_argument) {
    return number;
  }
  number.length = static_cast<std::size_t>(stop - text.data());
  if (error == std::errc::result_out_of_range) {
    number.fits = false;
    number.value = negative ? INT32_MIN : INT32_MAX;
  }
  return number;
}

} // namespace

std::int32_t decimal(std::string_view text) {
  return read_number(text).value;
}

bool take_decimal(std::string_view &line, std::int32_t &value) {
  auto number = read_number(line);
  if (number.length == 0 || !number.fits) {
    return false;
  }
  value = number.value;
  line.remove_prefix(number.length);
  return true;
}

Text<16> decimal_text(std::int32_t value) {
  std::array<char, 16> digits{};
  std::to_chars(digits.begin(), digits.end() - 1, value);
  return {digits.data()};
}

} // namespace nasshare
