// A text that a caller hands over, copied at the door: it may lie in the very list that the operation is
// about to empty or in a record that it is about to change.
#pragma once

#include "base/text.h"

namespace nasshare {

class Argument {
public:
  // A null text counts as empty. One that is longer than every field of a record lies in none, and stays
  // where it is.
  explicit Argument(const char *text) : text_(text == nullptr ? "" : text), copy_{text_} {}
  Argument(const Argument &) = delete;
  Argument &operator=(const Argument &) = delete;

  [[nodiscard]] const char *c_str() const { return copy_.is_whole() ? copy_.c_str() : text_; }
  [[nodiscard]] std::string_view view() const { return c_str(); }

private:
  const char *text_;
  Text<list_width> copy_;
};

} // namespace nasshare
