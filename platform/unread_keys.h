// Keys whose last reading failed. A program takes such a value for missing and may want to store its default:
// that must not replace a value that is there.
#pragma once

#include <set>
#include <string>

namespace nasshare::platform {

class UnreadKeys {
public:
  void remember(const char *key, bool is_unread) noexcept {
    try {
      if (is_unread) {
        keys_.insert(key);
      } else {
        keys_.erase(key);
      }
    } catch (...) { // memory is too short to tell one key from another
      has_all_ = has_all_ || is_unread;
    }
  }
  [[nodiscard]] bool contain(const std::string &key) const { return has_all_ || keys_.contains(key); }

private:
  std::set<std::string> keys_;
  bool has_all_ = false;
};

} // namespace nasshare::platform
