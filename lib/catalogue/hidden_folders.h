// The mount points of the hidden system partitions, "/mnt/HD_a4" and so on, in alphabetical order.
#pragma once

#include "base/owners.h"
#include "base/text.h"

#include <cstddef>

namespace nasshare {

using HiddenFolder = Text<name_width>; // a name in a folder has at most 255 bytes

class HiddenFolders {
public:
  HiddenFolders();
  HiddenFolders(const HiddenFolders &) = delete;
  HiddenFolders &operator=(const HiddenFolders &) = delete;
  ~HiddenFolders();

  // What keeps anybody from telling which there are, as errno has it, or 0; a machine without /mnt has none.
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] HiddenFolder operator[](std::size_t i) const;

private:
  int error_ = 0;
  std::size_t size_ = 0;
  Allocated<dirent *> entries_;
};

} // namespace nasshare
