#include "support/trouble.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace nasshare {

namespace {

bool doubtful = false;
bool missing = false;

constexpr std::array failures{EMFILE, ENFILE, ENOMEM, EIO, ENOSPC, EUCLEAN, EBADMSG};

template <std::size_t size> bool is_among(const std::array<int, size> &errors, int error) {
  return std::ranges::find(errors, error) != errors.end();
}

} // namespace

void load_begins() {
  doubtful = false;
  missing = false;
}

void note_trouble() {
  doubtful = true;
}

void note_missing() {
  missing = true;
}

void note_file_error() {
  constexpr std::array facts{ENOENT, ENOTDIR, EISDIR, ELOOP,  ENAMETOOLONG,
                             EACCES, EPERM,   ENOTTY, EINVAL, ENOSYS};
  constexpr std::array shortages{ENOMEM, EMFILE, ENFILE};
  doubtful = doubtful || is_among(shortages, errno);
  missing = missing || !is_among(facts, errno);
}

void note_setting_error() {
  doubtful = doubtful || is_among(failures, errno);
}

void note_account_error() {
  constexpr std::array again{EAGAIN, EINTR};
  doubtful = doubtful || is_among(failures, errno) || is_among(again, errno);
}

bool load_was_troubled() {
  return doubtful || missing;
}

bool load_is_doubtful() {
  return doubtful;
}

TroubleApart::TroubleApart() : doubtful_(doubtful), missing_(missing) {}

TroubleApart::~TroubleApart() {
  doubtful = doubtful_;
  missing = missing_;
}

} // namespace nasshare
