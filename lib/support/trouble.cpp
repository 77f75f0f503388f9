#include "support/trouble.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace nasshare {

namespace {

bool troubled = false;

constexpr std::array failures{EMFILE, ENFILE, ENOMEM, EIO, ENOSPC, EUCLEAN, EBADMSG};

template <std::size_t size> bool is_among(const std::array<int, size> &errors, int error) {
  return std::ranges::find(errors, error) != errors.end();
}

} // namespace

void load_begins() {
  troubled = false;
}

void note_trouble() {
  troubled = true;
}

void note_file_error() {
  constexpr std::array facts{ENOENT, ENOTDIR, EISDIR, ELOOP,  ENAMETOOLONG,
                             EACCES, EPERM,   ENOTTY, EINVAL, ENOSYS};
  troubled = troubled || !is_among(facts, errno);
}

void note_setting_error() {
  troubled = troubled || is_among(failures, errno);
}

void note_account_error() {
  constexpr std::array again{EAGAIN, EINTR};
  troubled = troubled || is_among(failures, errno) || is_among(again, errno);
}

bool load_was_troubled() {
  return troubled;
}

} // namespace nasshare
