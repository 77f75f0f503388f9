// A configuration file that services hold open by name: it is written in place, but its text is complete
// before the file is touched and goes into it in one call.
#pragma once

#include "support/owners.h"

#include <cstddef>
#include <cstdio>

namespace nasshare {

class InPlaceFile {
public:
  // Opens the file, creating it when it is missing; what it holds stays until commit().
  explicit InPlaceFile(const char *path);
  InPlaceFile(const InPlaceFile &) = delete;
  InPlaceFile &operator=(const InPlaceFile &) = delete;
  ~InPlaceFile();

  [[nodiscard]] bool is_open() const { return static_cast<bool>(file_); }
  // Where the text is composed; null when memory is short.
  [[nodiscard]] FILE *text() const { return memory_.get(); }
  // Replaces the file's content with the text and closes it. 0, or -1 when it could not be written.
  int commit();

private:
  Descriptor file_;
  char *bytes_ = nullptr;
  std::size_t size_ = 0;
  File memory_;
};

} // namespace nasshare
