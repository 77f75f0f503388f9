#include "nasshare/support.h"

#include <cstring>

namespace {

// White-space and control characters of the POSIX locale, whatever the caller's locale is.
bool is_blank_or_control(char c) {
  auto code = static_cast<unsigned char>(c);
  return code <= ' ' || code == 0x7F;
}

} // namespace

void remove_0D_0A(char *text) {
  if (text == nullptr) {
    return;
  }
  for (auto length = std::strlen(text); length > 0 && is_blank_or_control(text[length - 1]); --length) {
    text[length - 1] = '\0';
  }
}
