// The two gates of the debug output.
#include "debug_output.h"

#include "nasshare/support.h"
#include "output.h"

#include <gtest/gtest.h>

namespace nasshare::tests {

void expect_output(const Operation &operation, const std::function<std::string(int flag)> &text) {
  const int before = smb_dbg_flag;
  for (const int flag : {0, 1, 2, -1}) {
    SCOPED_TRACE("smb_dbg_flag " + std::to_string(flag));
    smb_dbg_flag = flag;
    Captured captured;
    operation();
    const std::string printed = captured.out();
    EXPECT_EQ(printed, text(flag));
    EXPECT_EQ(captured.err(), "");
  }
  smb_dbg_flag = before;
}

void expect_listing_and_trace(const Operation &operation, const std::string &listing,
                              const std::string &with_trace) {
  expect_output(operation, [&](int flag) { return flag == 0 ? "" : flag == 1 ? with_trace : listing; });
}

void expect_listing(const Operation &operation, const std::string &listing) {
  expect_listing_and_trace(operation, listing, listing);
}

void expect_trace(const Operation &operation, const std::string &trace) {
  expect_listing_and_trace(operation, "", trace);
}

void expect_silence(const Operation &operation) {
  expect_listing(operation, "");
}

} // namespace nasshare::tests
