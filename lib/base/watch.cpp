// Which errors are trouble and which are facts, and who is told.
#include "base/watch.h"

#include <algorithm>
#include <array>

namespace nasshare {
namespace {

Watch *innermost = nullptr;

constexpr std::array shortages{ENOMEM, EMFILE, ENFILE};
constexpr std::array failures{ENOMEM, EMFILE, ENFILE, EIO, ENOSPC, EUCLEAN, EBADMSG};
constexpr std::array facts{ENOENT, ENOTDIR, EISDIR, ELOOP,  ENAMETOOLONG,
                           EACCES, EPERM,   ENOTTY, EINVAL, ENOSYS};

template <std::size_t Size> bool is_among(const std::array<int, Size> &errors, int error) {
  return std::ranges::find(errors, error) != errors.end();
}

} // namespace

Trouble &Trouble::operator|=(const Trouble &other) {
  is_doubtful = is_doubtful || other.is_doubtful;
  lacks_some = lacks_some || other.lacks_some;
  return *this;
}

Watch::Watch(Scope scope) : outer_(innermost), scope_(scope) {
  innermost = this;
}

Watch::Watch(Trouble &kept) : outer_(innermost), kept_(&kept) {
  innermost = this;
}

Watch::~Watch() {
  innermost = outer_;
}

void Watch::see(const Trouble &trouble) {
  seen_ |= trouble;
  if (kept_ != nullptr) {
    *kept_ |= trouble;
  }
}

void note(const Trouble &trouble) {
  auto *watch = innermost;
  while (watch != nullptr) {
    watch->see(trouble);
    watch = watch->scope_ == Watch::Scope::apart ? nullptr : watch->outer_;
  }
}

void note_doubt() {
  note({.is_doubtful = true});
}

void note_lack() {
  note({.lacks_some = true});
}

void note_file_error(int error) {
  note({.is_doubtful = is_among(shortages, error), .lacks_some = !is_among(facts, error)});
}

void note_setting_error(int error) {
  note({.is_doubtful = is_among(failures, error)});
}

void note_account_error(int error) {
  note({.is_doubtful = is_among(failures, error) || error == EAGAIN || error == EINTR});
}

} // namespace nasshare
