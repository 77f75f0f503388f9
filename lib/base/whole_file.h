// A regular file, read whole.
#pragma once

#include "base/owners.h"

#include <string_view>

namespace nasshare {

class WholeFile {
public:
  explicit WholeFile(const char *path);
  // Of a descriptor that open() gave, from its start.
  explicit WholeFile(const Descriptor &file);

  // What the file holds; empty when it could not be read.
  [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }
  // What kept it from being read, as errno has it, or 0. What is no regular file, and one of 2 GiB and more,
  // is EINVAL.
  [[nodiscard]] int error() const { return error_; }

private:
  [[nodiscard]] int read(const Descriptor &file);

  Allocated<char> bytes_;
  std::size_t size_ = 0;
  int error_;
};

} // namespace nasshare
