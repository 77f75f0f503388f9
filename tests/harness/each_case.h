// Many cases by one program, each in a process of its own and in a private machine of its own: for a tool
// such as valgrind, whose start takes longer than a case. The program waits outside; each case is a child of
// it that enters the machine.
#pragma once

#include <string>
#include <vector>

namespace nasshare::tests {

// Runs the cases, named as --gtest_filter does. The command (appliance/machine/appliance and its options)
// makes the machines. Prints a line "passed NAME" or "failed NAME" for each, with what a failed one printed
// before it. Whether all passed.
bool run_each_case(const std::vector<std::string> &cases, const std::vector<std::string> &machine_command);

} // namespace nasshare::tests
