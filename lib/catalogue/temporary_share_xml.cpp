// Writing where everybody can write: nobody knows the successor's name beforehand, and what is planted under
// the file's own name goes.
#include "catalogue/temporary_share_xml.h"

#include "base/file_replacement.h"
#include "base/folder_of.h"
#include "base/text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

// Over whatever stands there. A folder changes places with the file: were it removed first, another could be
// planted before the file is there. It may come and go meanwhile.
bool rename_over(const char *successor, const char *target) {
  constexpr int most_attempts = 1000;
  for (int attempt = 0; attempt < most_attempts; ++attempt) {
    if (std::rename(successor, target) == 0) {
      return true;
    }
    if (errno != EISDIR) {
      return false;
    }
    if (renameat2(AT_FDCWD, successor, AT_FDCWD, target, RENAME_EXCHANGE) == 0) {
      rmdir(successor); // or it stays there, with what is in it
      return true;
    }
  }
  return false;
}

} // namespace

TemporaryShareXml::TemporaryShareXml()
    : file_(open(temporary_share_xml, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW)), content_(file_) {
  if (!file_ || fstat(file_.get(), &status_) != 0) {
    status_ = {};
  }
}

bool TemporaryShareXml::is_own() const {
  return S_ISREG(status_.st_mode) && status_.st_uid == geteuid() && status_.st_nlink == 1 &&
         content_.error() == 0;
}

bool is_in_shared_folder(std::string_view path) {
  struct stat status {};
  return stat(folder_of(path).c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
}

bool store_in_shared_folder(const char *path, std::string_view content) {
  Successor successor(path, Successor::Naming::secret);
  if (!successor.write(content) || !rename_over(successor.name(), path)) {
    return false;
  }
  successor.has_taken_place();
  return true;
}

} // namespace nasshare
