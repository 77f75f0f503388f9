// Lets each allocation of a function fail in turn, alone or with all that follow.
#pragma once

#include "findings.h"
#include "traced_child.h"

#include <functional>
#include <string>

namespace nasshare::tests {

// Runs begin, the function short of one more allocation than before, and judge, which says what is wrong
// then. A child process does so again and again, as a program does that outlives a shortage; one that ends is
// judged too, and followed by another.
Endured fail_each_allocation(const std::function<void()> &begin, const Function &run,
                             const std::function<std::string(const Interrupted &)> &judge);

} // namespace nasshare::tests
