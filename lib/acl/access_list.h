// Access-list text: one walker and one builder.
//
// The walker yields what smb_strtok yields with the delimiters "#,": "#alice#,#@staff#" is alice, @staff, and
// a text of delimiters only is one empty token. It has no state outside itself.
#pragma once

#include "base/text.h"

#include <iterator>
#include <optional>

namespace nasshare {

inline constexpr bool is_list_delimiter(char c) {
  return c == '#' || c == ',';
}

class TokenIterator {
public:
  using iterator_category = std::forward_iterator_tag;
  using value_type = std::string_view;
  using difference_type = std::ptrdiff_t;

  TokenIterator() = default;
  explicit TokenIterator(std::string_view list) : rest_(skip_delimiters(list)) { take(); }

  std::string_view operator*() const { return *token_; }
  TokenIterator &operator++() {
    token_.reset();
    if (!rest_.empty()) {
      take();
    }
    return *this;
  }
  TokenIterator operator++(int) {
    const auto before = *this;
    ++*this;
    return before;
  }
  bool operator==(std::default_sentinel_t /*end*/) const { return !token_; }

private:
  static std::string_view skip_delimiters(std::string_view text) {
    return {std::ranges::find_if_not(text, is_list_delimiter), text.end()};
  }
  void take() {
    const auto *const end = std::ranges::find_if(rest_, is_list_delimiter);
    token_ = std::string_view(rest_.begin(), end);
    rest_ = skip_delimiters({end, rest_.end()});
  }

  std::string_view rest_;
  std::optional<std::string_view> token_;
};

class Tokens {
public:
  explicit Tokens(std::string_view list) : list_(list) {}
  [[nodiscard]] TokenIterator begin() const { return TokenIterator(list_); }
  [[nodiscard]] static std::default_sentinel_t end() { return {}; }

private:
  std::string_view list_;
};

inline bool is_group(std::string_view token) {
  return token.starts_with('@');
}

// A list being written, entry by entry with commas between. An entry that does not fit is left out whole, and
// so is what follows it.
class ListBuilder {
public:
  // Adds one entry, put together from two pieces and a closing mark.
  void add_entry(std::string_view opening, std::string_view name, std::string_view closing) {
    is_full_ = is_full_ || !text_.append_whole({has_begun_ ? "," : "", opening, name, closing});
    has_begun_ = true;
  }
  // Adds "#token#".
  void add(std::string_view token) { add_entry("#", token, "#"); }

  [[nodiscard]] std::string_view view() const { return text_.view(); }
  [[nodiscard]] bool is_whole() const { return !is_full_; } // no entry has been left out

private:
  Text<list_width> text_;
  bool has_begun_ = false;
  bool is_full_ = false;
};

// The list of 12288 bytes behind an exported operation's pointer.
inline std::span<char> list_field(char *list) {
  return {list, list_width};
}

// The longest beginning of the list of at most `room` bytes that cuts no entry: half a name may be somebody
// else's.
std::string_view cut_list(std::string_view list, std::size_t room);

// Copies the list into the field, cut so to its width. The list may overlap the field.
void assign_list(std::span<char> field, std::string_view list);

// The same for a list of those who are denied: whoever is cut off would be let in, so that is doubt.
void assign_denied_or_note(std::span<char> field, std::string_view list);

} // namespace nasshare
