/* Runs one test case, inside a private machine and nowhere else. */
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

/* Cases leave their traces in the machine, so each needs one of its own. */
class OneCaseOnly : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest &program) override {
    if (program.test_to_run_count() <= 1)
      return;
    std::fputs(
        "Every test case needs a machine of its own: run ctest, or choose one case with --gtest_filter.\n",
        stderr);
    std::exit(2);
  }
};

} // namespace

int main(int argc, char **argv) {
  if (::access("/run/appliance/private", F_OK) != 0) {
    std::fputs("These tests write to /etc, /mnt and /dev and run only inside a private machine:\n"
               "  appliance/appliance --keep BUILD-FOLDER -- TEST-PROGRAM --gtest_filter=CASE\n",
               stderr);
    return 2;
  }
  // As on a terminal, so that lines of this process and of its children stay in order.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new OneCaseOnly);
  return RUN_ALL_TESTS();
}
