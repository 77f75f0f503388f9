#include "support/shared_folder.h"

#include "support/text.h"

#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {

bool is_in_shared_folder(std::string_view path) {
  auto slash = path.find_last_of('/');
  Text<path_width> folder{slash == std::string_view::npos ? "." : path.substr(0, slash + 1)};
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
}

bool is_own_file(const char *path) {
  struct stat status {};
  return lstat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         status.st_nlink == 1;
}

} // namespace nasshare
