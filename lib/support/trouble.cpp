#include "support/trouble.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace nasshare {

namespace {

bool troubled = false;

bool passes_by(int error) {
  constexpr std::array<int, 7> errors{EMFILE, ENFILE, ENOMEM, ENOSPC, EIO, EAGAIN, EINTR};
  return std::ranges::find(errors, error) != errors.end();
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
