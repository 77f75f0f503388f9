// Collects what went wrong, each kind once, so that hundreds of interruptions stay readable.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace nasshare::tests {

class Findings {
public:
  // Nothing when `wrong` is empty.
  void add(const std::string &where, const std::string &wrong) {
    if (wrong.empty()) {
      return;
    }
    auto &[count, places] = found_[wrong];
    if (++count <= 12) {
      places += "  " + where + "\n";
    }
  }

  [[nodiscard]] std::string text() const {
    std::string text;
    for (const auto &[wrong, seen] : found_) {
      text += std::to_string(seen.first) + " times, first\n" + seen.second + wrong + "\n";
    }
    return text;
  }

private:
  std::map<std::string, std::pair<int, std::string>> found_;
};

} // namespace nasshare::tests
