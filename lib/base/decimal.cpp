// Decimal numbers in texts: 32 bits, saturating.
#include "base/decimal.h"

#include <array>
#include <charconv>

namespace nasshare {
namespace {

struct Number {
  std::int32_t value = 0;
  std::size_t length = 0; // up to the last digit; 0 when there is no number
  bool fits = true;
};

// A number at the very start, with "-" or without.
Number number_at_start(std::string_view text) {
  Number number;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number.value);
  if (error == std::errc::invalid_argument) {
    return number;
  }
  number.length = static_cast<std::size_t>(stop - text.data());
  if (error == std::errc::result_out_of_range) {
    number.fits = false;
    number.value = text.starts_with('-') ? INT32_MIN : INT32_MAX;
  }
  return number;
}

// The same behind white-space and perhaps a "+".
Number number_in(std::string_view text) {
  auto start = static_cast<std::size_t>(std::ranges::find_if_not(text, is_space) - text.begin());
  const auto rest = text.substr(start);
  if (rest.starts_with('+') && !rest.starts_with("+-")) {
    ++start;
  }
  auto number = number_at_start(text.substr(start));
  if (number.length > 0) {
    number.length += start;
  }
  return number;
}

} // namespace

std::int32_t decimal(std::string_view text) {
  return number_in(text).value;
}

std::int32_t whole_decimal(std::string_view text) {
  const auto digits = trimmed(text);
  const auto number = number_at_start(digits);
  return number.length == digits.size() ? number.value : 0;
}

bool take_decimal(std::string_view &line, std::int32_t &value) {
  const auto number = number_in(line);
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
