#include "nasshare/support.h"
#include "support/debug.h"

#include <cstdlib>
#include <unistd.h>

namespace {

// A developer's own build in the current directory is taken while tracing.
int run_service_command(const char *local, const char *local_command, const char *command) {
  bool use_local = nasshare::tracing() && access(local, F_OK) == 0;
  return std::system(use_local ? local_command : command);
}

} // namespace

int run_smbcv(void) {
  return run_service_command("./smbcv", "./smbcv -d", "smbcv");
}

int run_smbcom(void) {
  return run_service_command("./smbcom", "./smbcom -d", "smbcom");
}
