// The mount points of the hidden system partitions, "/mnt/HD_a4" and so on, in alphabetical order.
#pragma once

#include "nasshare/catalogue.h"
#include "support/text.h"

#include <cstdlib>
#include <dirent.h>

namespace nasshare {

using HiddenPath = Text<512>; // a name in a folder has at most 255 bytes

// Calls visit(path) for each of them.
template <class Visit> void each_hidden_folder(Visit visit) {
  dirent **entries = nullptr;
  int count = scandir("/mnt", &entries, hidden_filter_dir, alphasort);
  for (int i = 0; i < count; ++i) {
    visit(HiddenPath{"/mnt/", entries[i]->d_name});
    std::free(entries[i]);
  }
  std::free(entries);
}

} // namespace nasshare
