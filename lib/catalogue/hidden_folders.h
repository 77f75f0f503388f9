// The mount points of the hidden system partitions, "/mnt/HD_a4" and so on, in alphabetical order.
#pragma once

#include "nasshare/catalogue.h"
#include "support/text.h"

#include <cerrno>
#include <cstdlib>
#include <dirent.h>

namespace nasshare {

using HiddenPath = Text<512>; // a name in a folder has at most 255 bytes

// Calls visit(path) for each of them; false when they cannot be listed.
template <class Visit> bool each_hidden_folder(Visit visit) {
  dirent **entries = nullptr;
  int count = scandir("/mnt", &entries, hidden_filter_dir, alphasort);
  for (int i = 0; i < count; ++i) {
    visit(HiddenPath{"/mnt/", entries[i]->d_name});
    std::free(entries[i]);
  }
  std::free(entries);
  return count >= 0 || errno == ENOENT;
}

// Puts the temporary share XML into each of them; false when it is nobody's own file, when they cannot be
// listed, and when none of those that have the folder ".systemfile" took it. One of two that fails is not
// told.
bool spread_catalogue();

} // namespace nasshare
