#include "support/in_place.h"

#include "nasshare/support.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace nasshare {

InPlaceFile::InPlaceFile(const char *path)
    : file_(open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0666)), memory_(open_memstream(&bytes_, &size_)) {}

InPlaceFile::~InPlaceFile() {
  memory_.close();
  std::free(bytes_);
}

int InPlaceFile::commit() {
  bool complete = memory_.close() == 0;
  bool written = complete && ftruncate(file_.get(), 0) == 0 &&
                 full_write(file_.get(), bytes_, size_) == static_cast<ssize_t>(size_);
  return file_.close() == 0 && written ? 0 : -1;
}

} // namespace nasshare
