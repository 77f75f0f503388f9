// The search path of the service commands.
#include "service_commands.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <unistd.h>

namespace nasshare::cli {
namespace {

constexpr const char *installed_folder = NASSHARE_COMMANDS_FOLDER;

bool has_commands(const std::string &folder) {
  return ::access((folder + "/smbcom").c_str(), X_OK) == 0;
}

bool is_on_path(const std::string &path) {
  std::istringstream folders(path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (has_commands(folder)) {
      return true;
    }
  }
  return false;
}

} // namespace

void find_service_commands() {
  const char *const path = std::getenv("PATH");
  const std::string old = path == nullptr ? "/usr/sbin:/usr/bin:/sbin:/bin" : path;
  if (!is_on_path(old) && has_commands(installed_folder)) {
    ::setenv("PATH", (std::string(installed_folder) + ":" + old).c_str(), 1);
  }
}

} // namespace nasshare::cli
