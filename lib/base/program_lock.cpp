// How one program waits for another: flock(2) on a file in /run.
#include "base/program_lock.h"

#include "base/descriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nasshare {

ProgramLock::ProgramLock(const char *path)
    : file_(beyond_standard(Descriptor(open(path, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)))) {
  // Whoever may read it can hold it for ever. Somebody else's file cannot be shut, and locks all the same.
  static_cast<void>(fchmod(file_.get(), 0600));
  while (file_ && flock(file_.get(), LOCK_EX) != 0) {
    if (errno != EINTR) {
      file_.close();
    }
  }
}

void ProgramLock::share_with_commands() {
  static_cast<void>(fcntl(file_.get(), F_SETFD, 0)); // it always works on what is open
}

void ProgramLock::release() {
  if (file_) {
    flock(file_.get(), LOCK_UN);
    file_.close();
  }
}

} // namespace nasshare
