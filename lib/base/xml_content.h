// What texts and markup become as the content of an element: bytes that XML cannot hold stand there as
// U+FFFD.
#pragma once

#include "base/xml_characters.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nasshare {

enum class Form { text, markup };

namespace detail {
// Most of what is stored: it is itself in every form, and is not escaped.
constexpr auto plain_bytes = [] {
  std::array<bool, 256> is_plain{};
  for (unsigned char c = ' '; c <= '~'; ++c) {
    is_plain[c] = c != '&' && c != '<' && c != '>';
  }
  return is_plain;
}();

inline std::string_view plain_run(std::string_view text) {
  const auto *const end =
      std::ranges::find_if_not(text, [](char c) { return plain_bytes[static_cast<unsigned char>(c)]; });
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}
} // namespace detail

// Calls take(piece) for the content's pieces, in their order; what has to be escaped comes alone. In markup
// the references that XML knows are the characters that they stand for, and a "&" that begins none is a "&".
template <class Take> void each_piece(std::string_view text, Form form, Take take) {
  while (!text.empty()) {
    if (const auto run = detail::plain_run(text); !run.empty()) {
      take(run);
      text.remove_prefix(run.size());
    } else if (const auto reference = form == Form::markup ? reference_at(text) : std::nullopt) {
      take(utf8(reference->character).view());
      text.remove_prefix(reference->length);
    } else {
      const auto length = xml_character_length(text);
      take(length == 0 ? "\xEF\xBF\xBD" : text.substr(0, length));
      text.remove_prefix(std::max<std::size_t>(length, 1));
    }
  }
}

} // namespace nasshare
