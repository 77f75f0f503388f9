// The service commands of the appliance. While tracing, a developer's own build in the current directory is
// taken.
#include "base/debug.h"
#include "nasshare/support.h"

#include <cstdlib>
#include <unistd.h>

namespace nasshare {
namespace {

int run_service_command(const char *local, const char *local_command, const char *command) {
  const bool is_local = is_tracing() && access(local, F_OK) == 0;
  return std::system(is_local ? local_command : command);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int run_smbcv(void) {
  return run_service_command("./smbcv", "./smbcv -d", "smbcv");
}

int run_smbcom(void) {
  return run_service_command("./smbcom", "./smbcom -d", "smbcom");
}
