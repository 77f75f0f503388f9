// How many processes bear a name, as the kernel has it in /proc/PID/status (proc(5)).
#include "base/decimal.h"
#include "base/owners.h"
#include "nasshare/support.h"

#include <array>
#include <cstdio>

namespace nasshare {
namespace {

// The command name on the first line of a status file: "Name:", white-space, the name up to a blank.
std::string_view status_name(std::string_view line) {
  constexpr std::string_view label = "Name:";
  if (!line.starts_with(label)) {
    return {};
  }
  line.remove_prefix(label.size());
  return take_word(line);
}

// A process may end meanwhile.
bool runs_as(std::string_view process, std::string_view name) {
  const Text<64> path{"/proc/", decimal_text(decimal(process)).view(), "/status"};
  const File status(std::fopen(path.c_str(), "re"));
  std::array<char, 1024> line{};
  return status && std::fgets(line.data(), static_cast<int>(line.size()), status.get()) != nullptr &&
         status_name(line.data()) == name;
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int smb_check_ps(const char *name) {
  const Directory processes(opendir("/proc"));
  if (!processes) {
    std::printf("Can't open /proc");
    return 0;
  }
  int count = 0;
  while (const auto *const entry = readdir(processes.get())) {
    const bool is_process = entry->d_name[0] >= '0' && entry->d_name[0] <= '9';
    if (is_process && is_given(name) && runs_as(entry->d_name, name)) {
      ++count;
    }
  }
  return count;
}
