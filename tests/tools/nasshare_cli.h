// The command nasshare, run on a mirror (volume 1) and a single disk (volume 2).
#pragma once

#include "appliance.h"
#include "output.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {

inline constexpr int refused = 1;
inline constexpr int wrong_usage = 2;

inline Ended nasshare(std::vector<std::string> words) {
  words.insert(words.begin(), NASSHARE_CLI);
  return run_program(words);
}

// A command that does what it should and prints nothing.
inline void succeed(const std::vector<std::string> &words) {
  const Ended ended = nasshare(words);
  EXPECT_EQ(ended.status, 0) << words.front();
  EXPECT_EQ(ended.out + ended.err, "");
}

inline void expect_refusal(const std::vector<std::string> &words, const std::string &reason) {
  const Ended ended = nasshare(words);
  EXPECT_EQ(ended.status, refused) << reason;
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "nasshare: " + reason + "\n");
}

inline void expect_wrong_usage(const std::vector<std::string> &words, const std::string &reason) {
  const Ended ended = nasshare(words);
  EXPECT_EQ(ended.status, wrong_usage) << reason;
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "nasshare: " + reason + "\n");
}

class Nasshare : public testing::Test {
protected:
  void SetUp() override {
    machine_ = Appliance::mirror();
    machine_.mount("/dev/sdb3", "/mnt/HD/HD_b2")
        .folder("/mnt/HD/HD_a2/music")
        .folder("/mnt/HD/HD_a2/docs")
        .folder("/mnt/HD/HD_b2/photos");
  }

  static void add(std::vector<std::string> words) {
    words.insert(words.begin(), "add");
    const Ended ended = nasshare(words);
    ASSERT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(ended.out + ended.err, "");
  }

  // The value of one row of "show".
  static std::string shown(const std::string &share, const std::string &row) {
    const Ended ended = nasshare({"show", share});
    EXPECT_EQ(ended.status, 0) << ended.err;
    const Names lines = lines_beginning(ended.out, row + " ");
    return lines.empty() ? "no row " + row : lines.front().substr(std::string_view("map-archive  ").size());
  }

  Appliance machine_;
};

} // namespace nasshare::tests
