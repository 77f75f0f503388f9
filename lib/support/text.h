// Bounded text: every copy knows the width of where it goes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace nasshare {

inline constexpr std::size_t name_width = 512;
inline constexpr std::size_t path_width = 4096;
inline constexpr std::size_t list_width = 12288;

// The text in a field, up to its terminator or its end.
std::string_view view(std::span<const char> field);

// The longest beginning of text of at most `room` bytes that cuts no UTF-8 character and no XML entity.
std::string_view cut_text(std::string_view text, std::size_t room);

// The same for an access list: no entry is cut, since half a name may be somebody else's.
std::string_view cut_list(std::string_view list, std::size_t room);

// Copies text into the field, cut to its width and terminated. The source may overlap the field.
void assign(std::span<char> field, std::string_view text);
void assign_list(std::span<char> field, std::string_view list);

inline bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool equals_ignoring_case(std::string_view a, std::string_view b);

// A C string argument that may be missing.
inline bool given(const char *text) {
  return text != nullptr && *text != '\0';
}

// White-space of the POSIX locale.
inline bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// The next word of the line, taken off its front; empty at the end.
std::string_view take_word(std::string_view &line);

// The decimal number at the start of the text, as atoi reads it, but saturating; 0 when there is none.
std::int32_t decimal(std::string_view text);

// Takes a decimal number off the front of the line; false when there is none or it does not fit.
bool take_decimal(std::string_view &line, std::int32_t &value);

// A text that is put together piece by piece and never grows past its width, terminator included.
template <std::size_t Width> class Text {
public:
  Text() { bytes_[0] = '\0'; }
  Text(std::initializer_list<std::string_view> pieces) : Text() {
    for (auto piece : pieces) {
      append(piece);
    }
  }

  void append(std::string_view piece) {
    auto kept = cut_text(piece, Width - 1 - size_);
    size_ = static_cast<std::size_t>(std::ranges::copy(kept, bytes_ + size_).out - bytes_);
    bytes_[size_] = '\0';
    whole_ = whole_ && kept.size() == piece.size();
  }

  // Appends the pieces together, or nothing and false when they do not fit.
  bool append_whole(std::initializer_list<std::string_view> pieces) {
    std::size_t length = 0;
    for (auto piece : pieces) {
      length += piece.size();
    }
    if (length > Width - 1 - size_) {
      return false;
    }
    for (auto piece : pieces) {
      append(piece);
    }
    return true;
  }

  void clear() {
    size_ = 0;
    whole_ = true;
    bytes_[0] = '\0';
  }

  // The bytes, to be changed in place by what knows the width; view() then no longer holds.
  std::span<char> field() { return bytes_; }

  [[nodiscard]] std::string_view view() const { return {bytes_, size_}; }
  [[nodiscard]] const char *c_str() const { return bytes_; }
  [[nodiscard]] bool empty() const { return size_ == 0; }
  [[nodiscard]] bool whole() const { return whole_; } // nothing has been cut

private:
  char bytes_[Width];
  std::size_t size_ = 0;
  bool whole_ = true;
};

// The decimal text of the value.
Text<16> decimal_text(std::int32_t value);

} // namespace nasshare
