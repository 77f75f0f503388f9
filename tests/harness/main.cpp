// Runs one test case, inside a private machine and nowhere else; or, with arguments "CASE... -- COMMAND",
// each case in a machine that the command makes.
#include "each_case.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string_view>
#include <unistd.h>

namespace nasshare::tests {
namespace {

// Cases leave their traces in the machine, so each needs one of its own.
class OneCaseOnly : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest &program) override {
    if (program.test_to_run_count() <= 1) {
      return;
    }
    std::fputs(
        "Every test case needs a machine of its own: run ctest, or choose one case with --gtest_filter.\n",
        stderr);
    std::exit(2);
  }
};

} // namespace
} // namespace nasshare::tests

// NOLINTNEXTLINE(bugprone-exception-escape): an exception ends a test program as it should
int main(int argc, char **argv) {
  // As on a terminal, so that lines of this process and of its children stay in order.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  char **const end = argv + argc;
  if (char **const separator = std::find(argv, end, std::string_view("--")); separator != end) {
    int no_more = 1;
    testing::InitGoogleTest(&no_more, argv);
    return nasshare::tests::run_each_case({argv + 1, separator}, {separator + 1, end}) ? 0 : 1;
  }
  if (::access("/run/appliance/private", F_OK) != 0) {
    std::fputs("These tests write to /etc, /mnt and /dev and run only inside a private machine:\n"
               "  appliance/machine/appliance --keep BUILD-FOLDER -- TEST-PROGRAM --gtest_filter=CASE\n",
               stderr);
    return 2;
  }
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new nasshare::tests::OneCaseOnly);
  return RUN_ALL_TESTS();
}
