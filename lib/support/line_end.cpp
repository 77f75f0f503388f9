// Cutting a line's end, for callers in C.
#include "base/text.h"
#include "nasshare/support.h"

#include <algorithm>
#include <cstring>

using namespace nasshare;

void remove_0D_0A(char *text) {
  if (text != nullptr) {
    const std::span whole(text, std::strlen(text));
    std::ranges::fill(whole.subspan(without_line_end(text).size()), '\0');
  }
}
