// The file of the configuration database: read under a lock, replaced whole, kept aside when it is broken.
#pragma once

#include "support/owners.h"

#include <optional>
#include <string>

namespace platform {

// The file's whole text. An empty optional when it cannot be read, and errno says why; an absent file is an
// empty text.
std::optional<std::string> read_file(const char *path);

// A lock on a folder, held while a file below it is read, changed and replaced. Creates the folder.
class FolderLock {
public:
  explicit FolderLock(const char *folder);
  FolderLock(const FolderLock &) = delete;
  FolderLock &operator=(const FolderLock &) = delete;
  ~FolderLock();

  [[nodiscard]] bool held() const { return static_cast<bool>(folder_); }

private:
  nasshare::Descriptor folder_;
};

// Gives the file a second name; a file that had it loses it.
bool keep_aside(const char *path, const char *aside);

} // namespace platform
