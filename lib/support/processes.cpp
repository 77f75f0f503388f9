#include "nasshare/support.h"
#include "support/owners.h"
#include "support/text.h"

#include <array>
#include <cstdio>
#include <dirent.h>
#include <memory>

using namespace nasshare;

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

bool runs_as(std::int32_t process, std::string_view name) {
  Text<64> path{"/proc/", decimal_text(process).view(), "/status"};
  File status(std::fopen(path.c_str(), "re"));
  std::array<char, 1024> line{};
  return status && std::fgets(line.data(), static_cast<int>(line.size()), status.get()) != nullptr &&
         status_name(line.data()) == name;
}

struct CloseDirectory {
  void operator()(DIR *directory) const { closedir(directory); }
};

} // namespace

int smb_check_ps(const char *name) {
  std::unique_ptr<DIR, CloseDirectory> processes(opendir("/proc"));
  if (!processes) {
    std::printf("Can't open /proc");
    return 0;
  }
  int count = 0;
  while (const auto *entry = readdir(processes.get())) {
    bool is_process = entry->d_name[0] >= '0' && entry->d_name[0] <= '9';
    if (is_process && given(name) && runs_as(decimal(entry->d_name), name)) {
      ++count;
    }
  }
  return count;
}
