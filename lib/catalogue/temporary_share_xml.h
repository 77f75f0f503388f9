// The file in which a change is written before it is spread over the volumes. It lies in /tmp, where
// everybody can write: what others have planted there is neither followed nor in the way.
#pragma once

#include "base/whole_file.h"

#include <string_view>
#include <sys/stat.h>

namespace nasshare {

inline constexpr const char *temporary_share_xml = "/tmp/.smb.xml";

// What is to be spread, read and judged by one descriptor: in a folder where names can be exchanged, the next
// look at the name may find another file.
class TemporaryShareXml {
public:
  TemporaryShareXml();

  // Whether it is a file of this process's user alone (no link, no second name, no pipe, nobody else's)
  // and was read.
  [[nodiscard]] bool is_own() const;
  [[nodiscard]] std::string_view text() const { return content_.text(); }
  [[nodiscard]] mode_t permissions() const { return status_.st_mode & 0777U; }

private:
  Descriptor file_;
  struct stat status_ {};
  WholeFile content_;
};

// Whether everybody can write in the folder that holds the path.
bool is_in_shared_folder(std::string_view path);

// Replaces a file in such a folder. False when that fails; what stood there is then as it was.
[[nodiscard]] bool store_in_shared_folder(const char *path, std::string_view content);

} // namespace nasshare
