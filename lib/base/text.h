// Bounded text: every copy knows the width of where it goes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string_view>

namespace nasshare {

// The widths of the records' fields.
inline constexpr std::size_t name_width = 512;
inline constexpr std::size_t path_width = 4096;
inline constexpr std::size_t list_width = 12288;

// The text in a field, up to its terminator or its end.
std::string_view view(std::span<const char> field);

// The longest beginning of text of at most `room` bytes that cuts no UTF-8 character and no XML entity.
std::string_view cut_text(std::string_view text, std::size_t room);

// Puts text, which fits, and a terminator into the field. The text may overlap the field.
void place(std::span<char> field, std::string_view text);

// The same with a text that is cut to the field's width.
void assign(std::span<char> field, std::string_view text);

// A C string argument that is there and not empty.
inline bool is_given(const char *text) {
  return text != nullptr && *text != '\0';
}

inline bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool equals_ignoring_case(std::string_view a, std::string_view b);

// White-space of the POSIX locale, whatever the caller's locale is.
inline bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// The text without the white-space around it.
std::string_view trimmed(std::string_view text);

// The text without the white-space and control characters at its end.
std::string_view without_line_end(std::string_view text);

// Takes the next word, and the white-space before it, off the front of the line; empty at the end.
std::string_view take_word(std::string_view &line);

// Takes that text, and white-space before it, off the front of the line; false when another text stands
// there.
[[nodiscard]] bool take(std::string_view &line, std::string_view text);

// A text that is put together piece by piece and never grows past its width, terminator included.
template <std::size_t Width> class Text {
public:
  Text() { bytes_[0] = '\0'; }
  Text(std::initializer_list<std::string_view> pieces) : Text() {
    for (const auto piece : pieces) {
      append(piece);
    }
  }

  void append(std::string_view piece) {
    const auto kept = cut_text(piece, Width - 1 - size_);
    size_ = static_cast<std::size_t>(std::ranges::copy(kept, bytes_ + size_).out - bytes_);
    bytes_[size_] = '\0';
    is_whole_ = is_whole_ && kept.size() == piece.size();
  }

  // Appends the pieces together, or nothing and false when they do not fit.
  [[nodiscard]] bool append_whole(std::initializer_list<std::string_view> pieces) {
    std::size_t length = 0;
    for (const auto piece : pieces) {
      length += piece.size();
    }
    if (length > Width - 1 - size_) {
      return false;
    }
    for (const auto piece : pieces) {
      append(piece);
    }
    return true;
  }

  // The bytes, to be changed in place by what knows the width; view() then no longer holds.
  std::span<char> field() { return bytes_; }

  [[nodiscard]] std::string_view view() const { return {bytes_, size_}; }
  [[nodiscard]] const char *c_str() const { return bytes_; }
  [[nodiscard]] bool is_empty() const { return size_ == 0; }
  [[nodiscard]] bool is_whole() const { return is_whole_; } // nothing has been cut

private:
  char bytes_[Width];
  std::size_t size_ = 0;
  bool is_whole_ = true;
};

} // namespace nasshare
