// The mount points of the hidden system partitions, "/mnt/HD_a4" and so on, in alphabetical order.
#pragma once

#include "base/owners.h"
#include "base/text.h"
#include "nasshare/catalogue.h"

#include <cerrno>
#include <span>

namespace nasshare {

using HiddenFolder = Text<name_width>; // a name in a folder has at most 255 bytes

// Calls visit(path) for each of them; false when they cannot be listed.
template <class Visit> [[nodiscard]] bool each_hidden_folder(Visit visit) {
  dirent **entries = nullptr;
  const int count = scandir("/mnt", &entries, hidden_filter_dir, alphasort);
  if (count < 0) {
    return errno == ENOENT; // a machine without /mnt has none
  }
  const Allocated<dirent *> list(entries);
  for (auto *const found : std::span(entries, static_cast<std::size_t>(count))) {
    const Allocated<dirent> entry(found);
    visit(HiddenFolder{"/mnt/", entry->d_name});
  }
  return true;
}

} // namespace nasshare
