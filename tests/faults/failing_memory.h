// Lets allocations fail in this process: those of the libraries, the C library's own included, but none of
// the test program's.
#pragma once

namespace nasshare::tests {

// From here on allocations can fail. False when it is not known here how this processor's programs refer to
// functions of libraries.
bool watch_allocations();

enum class Shortage { once, from_then_on };

// Lets the n-th allocation from now on fail, by malloc, calloc, realloc or operator new; *came is set when it
// comes.
void fail_allocation(int n, Shortage shortage, bool *came);

void fail_no_allocation();

} // namespace nasshare::tests
