// Values in smb.conf and krb5.conf, where a line end would begin an option of its own. The catalogue refuses
// such values, but disks from elsewhere and the configuration database may bring them.
#pragma once

#include "support/text.h"

#include <algorithm>

namespace nasshare {

using Line = Text<list_width>;

// The value with a blank for each line end.
inline Line one_line(std::string_view value) {
  Line line{value};
  auto text = line.field().first(line.view().size());
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return line;
}

} // namespace nasshare
