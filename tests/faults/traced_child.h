// Runs a function in a child process whose system calls are watched: the child can be killed before any of
// them, and any of them can be made to fail. Commands that it starts are left alone, and so are its calls for
// the description of the machine below /run/appliance, which stands for the kernel's answers.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nasshare::tests {

struct Interrupted {
  bool reached = false;  // the call came to pass, so the child was killed or the call failed
  bool answered = false; // the function returned
  int answer = -1;       // what it returned, 0 to 9
  int status = 0;        // the child's exit status; 128 and the signal's number after a signal
  std::string call;      // the system call, such as "system call 257 /etc/mtab"
  std::string messages;  // the child's standard error
};

using Function = std::function<int()>;

// Whether this machine lets a process watch another; an emulator of a processor does not.
bool can_kill_at_calls();
// The same, on a processor whose registers are known here.
bool can_fail_calls();

// Kills the child before its n-th system call.
Interrupted killed_at(int n, const Function &function);

// A kind of system calls. A call that ends its work even when it reports a failure, such as close, is made.
struct CallKind {
  std::string name;
  std::vector<long> numbers;
  bool is_made = false;
};

// Lets the n-th call of the kind fail.
Interrupted failed_at(int n, const CallKind &kind, int error, const Function &function);

// A child that is not watched.
Interrupted run_alone(const Function &function);

} // namespace nasshare::tests
