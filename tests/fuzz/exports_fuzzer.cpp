// The exported folders: a path, then /etc/exports.
#include "fuzz.h"
#include "machine.h"

#include "nasshare/support.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  auto path = parts.next_string();
  auto exports = std::string(parts.next());
  machine::file("/etc/exports", exports);
  if (check_nfs_share(path.c_str()) == 1) {
    require(contains(exports, path), "an exported path stands in the file");
  }
  if (path.find_first_of("\"\n") == std::string::npos && path.size() < 4000) {
    machine::file("/etc/exports", exports + "\n\"" + path + "\" *(rw)\n");
    require(check_nfs_share(path.c_str()) == 1, "a path that is exported is found");
  }
}

} // namespace nasshare::fuzzing
