// The search path of the service commands.
#include "service_commands.h"

#include <algorithm>
#include <cstdlib>
#include <ranges>
#include <string>
#include <string_view>
#include <unistd.h>

namespace nasshare::cli {
namespace {

constexpr const char *installed_folder = NASSHARE_COMMANDS_FOLDER;

bool has_commands(const std::string &folder) {
  return ::access((folder + "/smbcom").c_str(), X_OK) == 0;
}

bool is_on_path(std::string_view path) {
  return std::ranges::any_of(path | std::views::split(':'), [](const auto &folder) {
    return has_commands(std::string(folder.begin(), folder.end()));
  });
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
