// How one program waits for another: flock(2) on a file in /run.
#include "base/program_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace nasshare {

ProgramLock::ProgramLock(const char *path)
    : file_(open(path, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
  while (file_ && flock(file_.get(), LOCK_EX) != 0) {
    if (errno != EINTR) {
      file_.close();
    }
  }
}

void ProgramLock::release() {
  if (file_) {
    flock(file_.get(), LOCK_UN);
    file_.close();
  }
}

} // namespace nasshare
