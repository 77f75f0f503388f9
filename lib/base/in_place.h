// A configuration file that services hold open by name: it is written in place, but its text is complete
// before the file is touched, and so is the room for it on the disk.
#pragma once

#include "base/owners.h"

#include <cstdio>

namespace nasshare {

// Held while a text is put in place: two that are written at once would be mixed.
inline constexpr const char *in_place_lock = "/run/nasshare-in-place.lock";

class InPlaceFile {
public:
  // Opens the file, creating it when it is missing; what it holds stays until commit(). The path must outlive
  // the object.
  explicit InPlaceFile(const char *path);
  InPlaceFile(const InPlaceFile &) = delete;
  InPlaceFile &operator=(const InPlaceFile &) = delete;
  // A file that was created for a text which it did not get is gone again, unless another program gave it
  // one.
  ~InPlaceFile();

  [[nodiscard]] bool is_open() const { return static_cast<bool>(file_); }
  // Where the text is composed; null when there is no room for it in memory or, without that, on a disk.
  [[nodiscard]] FILE *text() const { return text_.get(); }
  // Replaces the file's content with the text and closes it. 0, or -1 when it could not be written; the file
  // then holds what it held, but where the disk itself fails.
  [[nodiscard]] int commit();

private:
  // Whether the path still leads to the file that is open.
  [[nodiscard]] bool stands() const;
  bool write_over();

  const char *path_;
  bool is_created_ = false;
  Descriptor file_;
  File text_;
};

} // namespace nasshare
