// Texts in the fixed fields of the library's records and arguments.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {

inline void require_room(std::string_view text, std::size_t width) {
  if (text.size() >= width) {
    throw std::length_error("text does not fit into its field");
  }
}

// The text has to fit; zeros follow it.
template <std::size_t width> void put(char (&field)[width], std::string_view text) {
  require_room(text, width);
  std::ranges::fill(std::ranges::copy(text, field).out, field + width, '\0');
}

// Up to the last byte, without a terminator.
template <std::size_t width> void overfill(char (&field)[width], char letter) {
  std::ranges::fill(field, letter);
}

// A text in exactly the bytes that its field has, so that the sanitizer sees every byte beyond them.
template <std::size_t width> class Field {
public:
  explicit Field(std::string_view text) : bytes_(width, '\0') {
    require_room(text, width);
    std::ranges::copy(text, bytes_.begin());
  }
  operator char *() { return bytes_.data(); }
  [[nodiscard]] std::string text() const { return bytes_.data(); }

private:
  std::vector<char> bytes_;
};

using AccessList = Field<12288>;
using PathField = Field<4096>;

} // namespace nasshare::tests
