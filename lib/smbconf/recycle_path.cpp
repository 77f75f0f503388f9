// The way from a share's folder to the recycle folder in its volume's root, for the option
// "recycle:repository" (vfs_recycle(8)).
#include "base/text.h"
#include "nasshare/smbconf.h"
#include "smbconf/recycle_folder.h"

#include <algorithm>

using namespace nasshare;

int cal_slash_num(char *path) {
  if (path == nullptr) {
    return 0;
  }
  auto text = std::string_view(path);
  if (text.ends_with('/')) {
    path[text.size() - 1] = '\0';
    text.remove_suffix(1);
  }
  return static_cast<int>(std::ranges::count(text, '/'));
}

// A volume's root, such as /mnt/HD/HD_a2, has three slashes.
void make_related_path(char *destination, int slash_count) {
  constexpr int root_slashes = 3;
  if (destination == nullptr || slash_count < root_slashes) {
    return;
  }
  Text<path_width> path{slash_count == root_slashes ? "./" : ""};
  for (int level = root_slashes; level < slash_count; ++level) {
    path.append("../");
  }
  path.append(recycle_folder);
  std::ranges::copy(path.view(), destination); // the caller has zeroed it
}
