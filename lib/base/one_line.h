// Values in files that are made of lines, where a line end would begin an option of its own.
#pragma once

#include "base/text.h"

namespace nasshare {

using Line = Text<list_width>;

inline bool contains_line_end(std::string_view value) {
  return value.find_first_of("\n\r") != std::string_view::npos;
}

// The value with a blank for each line end.
inline Line one_line(std::string_view value) {
  Line line{value};
  const auto text = line.field().first(line.view().size());
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return line;
}

} // namespace nasshare
