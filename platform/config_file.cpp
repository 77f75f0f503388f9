#include "config_file.h"

#include "support/owners.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

std::optional<std::string> read_file(const char *path) {
  nasshare::Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
  if (!file) {
    return errno == ENOENT ? std::optional<std::string>(std::string()) : std::nullopt;
  }
  std::string text;
  std::array<char, 16384> block{};
  for (;;) {
    auto count = read(file.get(), block.data(), block.size());
    if (count == 0) {
      return text;
    }
    if (count > 0) {
      text.append(block.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      const int error = errno;
      file.close();
      errno = error;
      return std::nullopt;
    }
  }
}

bool keep_aside(const char *path, const char *aside) {
  unlink(aside);
  return link(path, aside) == 0;
}

} // namespace platform
