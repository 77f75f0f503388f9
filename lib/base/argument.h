// A text that a caller hands over, copied at the door: it may lie in the very list that the operation is
// about to empty or in a record that it is about to change.
#pragma once

#include "base/text.h"

namespace nasshare {

// Longer than every field, so that a text that fits none matches none. A null one counts as empty.
class Argument : public Text<list_width + name_width> {
public:
  explicit Argument(const char *text) : Text{text == nullptr ? "" : text} {}
};

} // namespace nasshare
