// Decimal text for callers in C: one static buffer, which the next call overwrites.
#include "base/decimal.h"
#include "nasshare/catalogue.h"

using namespace nasshare;

char *itoa(int32_t value) {
  static char text[32];
  assign(text, decimal_text(value).view());
  return text;
}
