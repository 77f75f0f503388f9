// The files that changes store, read and put back.
#include "stored_files.h"

#include "appliance.h"
#include "files.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string_view>

namespace nasshare::tests {

namespace {

constexpr std::array folders{"/mnt/HD_a4/.systemfile", "/mnt/HD_b4/.systemfile", "/etc/NAS_CFG", "/tmp"};

void each_file(const std::function<void(const std::string &)> &visit) {
  for (const char *folder : folders) {
    for (const std::string &name : names_in(folder)) {
      const std::string path = std::string(folder) + "/" + name;
      if (!std::filesystem::is_directory(path)) {
        visit(path);
      }
    }
  }
}

std::string without_made_up_end(const std::string &path) {
  constexpr std::string_view mark = ".new.";
  const std::size_t place = path.rfind(mark);
  return place == std::string::npos ? path : path.substr(0, place + mark.size()) + "*";
}

} // namespace

Files stored_files() {
  Files files;
  each_file([&files](const std::string &path) { files[without_made_up_end(path)] = read_file(path); });
  return files;
}

void restore(const Files &files) {
  if (stored_files() == files) {
    return;
  }
  each_file(files::remove);
  for (const auto &[path, text] : files) {
    files::write(path, text);
  }
}

} // namespace nasshare::tests
