#include "support/trouble.h"

#include <cerrno>

namespace nasshare {

namespace {

bool troubled = false;

bool passes_by(int error) {
  return error == EMFILE || error == ENFILE || error == ENOMEM || error == EIO || error == EAGAIN ||
         error == EINTR;
}

} // namespace

void load_begins() {
  troubled = false;
}

void note_trouble() {
  troubled = true;
}

void note_trouble_of_errno() {
  troubled = troubled || passes_by(errno);
}

bool load_was_troubled() {
  return troubled;
}

} // namespace nasshare
