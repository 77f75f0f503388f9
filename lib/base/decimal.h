// Decimal numbers in texts.
#pragma once

#include "base/text.h"

#include <cstdint>

namespace nasshare {

// The number at the start of the text, as atoi reads it, but saturating; 0 when there is none.
std::int32_t decimal(std::string_view text);

// The number that the whole text is, white-space around it aside, saturating; 0 when it is none. A "+" makes
// none.
std::int32_t whole_decimal(std::string_view text);

// Takes a number, as atoi reads it, off the front of the line; false when there is none or it does not fit.
[[nodiscard]] bool take_decimal(std::string_view &line, std::int32_t &value);

Text<16> decimal_text(std::int32_t value);

} // namespace nasshare
