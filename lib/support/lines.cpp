#include "support/lines.h"

#include "nasshare/support.h"

namespace nasshare {

bool fetch_line(FILE *stream, char *buffer, int size) {
  if (stream == nullptr || std::fgets(buffer, size, stream) == nullptr) {
    return false;
  }
  remove_0D_0A(buffer);
  return true;
}

} // namespace nasshare
