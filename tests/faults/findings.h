// Collects what went wrong, each kind once, so that hundreds of interruptions stay readable.
#pragma once

#include <cstdio>
#include <gtest/gtest.h>
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

// What came of a change that was interrupted again and again.
struct Endured {
  int interruptions = 0;
  Findings findings;
};

// Nothing is wrong, and there were more interruptions than that.
inline void expect_nothing_found(const std::string &name, const Endured &endured,
                                 const std::string &interruptions, int more_than) {
  EXPECT_TRUE(endured.findings.text().empty()) << name << "\n" << endured.findings.text();
  EXPECT_GT(endured.interruptions, more_than);
  std::printf("%s: %d %s\n", name.c_str(), endured.interruptions, interruptions.c_str());
}

} // namespace nasshare::tests
