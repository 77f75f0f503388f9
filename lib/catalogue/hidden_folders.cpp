// Which entries of /mnt are hidden system partitions.
#include "catalogue/hidden_folders.h"

using namespace nasshare;

int hidden_filter_dir(const dirent *entry) {
  return entry != nullptr && std::string_view(entry->d_name).starts_with("HD_") ? 1 : 0;
}
