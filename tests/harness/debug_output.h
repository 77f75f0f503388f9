// What an operation prints on standard output at each value of smb_dbg_flag; on standard error it has to be
// silent. The library has two gates: a listing is printed for any value but 0, a trace for exactly 1.
#pragma once

#include <functional>
#include <string>

namespace nasshare::tests {

// Runs once for each kind of value, so it makes what it needs anew.
using Operation = std::function<void()>;

void expect_listing(const Operation &operation, const std::string &listing);
void expect_trace(const Operation &operation, const std::string &trace);
// A listing with traces in it: both texts whole.
void expect_listing_and_trace(const Operation &operation, const std::string &listing,
                              const std::string &with_trace);
// Nothing at any value.
void expect_silence(const Operation &operation);

// The text at each value, made when the operation has run.
void expect_output(const Operation &operation, const std::function<std::string(int flag)> &text);

} // namespace nasshare::tests
