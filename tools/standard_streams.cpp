// Standard input, output and error: each is open, and what was printed has arrived.
#include "standard_streams.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace nasshare::cli {

void open_standard_streams() {
  int lowest = -1;
  do {
    lowest = ::open("/dev/null", O_RDWR); // stays open, for the commands that are run too
  } while (lowest >= STDIN_FILENO && lowest <= STDERR_FILENO);
  if (lowest > STDERR_FILENO) {
    ::close(lowest);
  }
}

bool has_printed_all() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace nasshare::cli
