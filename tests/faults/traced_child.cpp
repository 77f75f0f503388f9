// Watching the system calls of a child.
#include "traced_child.h"

#include "files.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <set>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace nasshare::tests {

namespace {

using CallInfo = __ptrace_syscall_info;

constexpr int first_answer = 40; // exit status of a child whose function returned 0
constexpr int last_answer = 49;
constexpr int not_watched = 50;
constexpr long mark = SYS_getppid; // made before and behind the function, and by nothing in it

void end_at_once(int status, void * /*unused*/) {
  _exit(status);
}

[[noreturn]] void answer_with(const Function &function, bool watched, int messages) {
  dup2(messages, STDERR_FILENO);
  dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
  // A leak check on exit cannot work in a watched process.
  on_exit(end_at_once, nullptr);
  if (watched) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
      _exit(not_watched);
    }
    raise(SIGSTOP);
    syscall(mark);
  }
  const int answer = function();
  if (watched) {
    syscall(mark);
  }
  _exit(first_answer + answer);
}

pid_t start(const Function &function, bool watched, int messages) {
  const pid_t child = fork();
  files::require(child >= 0, "fork");
  if (child == 0) {
    answer_with(function, watched, messages);
  }
  return child;
}

class Messages {
public:
  Messages() : file_(memfd_create("messages", MFD_CLOEXEC)) { files::require(file_ >= 0, "memfd_create"); }
  ~Messages() { close(file_); }
  Messages(const Messages &) = delete;
  Messages &operator=(const Messages &) = delete;
  [[nodiscard]] int file() const { return file_; }
  [[nodiscard]] std::string text() const {
    std::string text(std::size_t{1} << 16, '\0');
    const ssize_t size = pread(file_, text.data(), text.size(), 0);
    text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return text;
  }

private:
  int file_;
};

void note_end(Interrupted &end, int status) {
  end.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  end.answered = end.status >= first_answer && end.status <= last_answer;
  end.answer = end.answered ? end.status - first_answer : -1;
}

// What happens at each system call of the child.
class Watched {
public:
  Watched(pid_t child, std::function<bool(const CallInfo &)> is_meant, int n, int error, bool is_made)
      : child_(child), is_meant_(std::move(is_meant)), left_(n), error_(error), is_made_(is_made) {}

  Interrupted run() {
    int status = 0;
    wait_for(status);
    files::require(WIFSTOPPED(status), "PTRACE_TRACEME");
    ask(PTRACE_SETOPTIONS, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    int signal = 0;
    for (;;) {
      if (!killed_) {
        const bool has_failed = end_.reached && !failing_; // what comes then is not looked at
        ask(has_failed ? PTRACE_CONT : PTRACE_SYSCALL, signal);
      }
      wait_for(status);
      if (!WIFSTOPPED(status)) {
        break;
      }
      const bool at_call = WSTOPSIG(status) == (SIGTRAP | 0x80);
      signal = at_call ? 0 : WSTOPSIG(status);
      if (at_call) {
        at_system_call();
      }
    }
    note_end(end_, status);
    return end_;
  }

private:
  void wait_for(int &status) const { files::require(waitpid(child_, &status, 0) == child_, "waitpid"); }

  void ask(__ptrace_request request, long data) const {
    files::require(ptrace(request, child_, nullptr, data) == 0, "ptrace");
  }

  void at_system_call() {
    CallInfo info{};
    files::require(ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info) > 0,
                   "PTRACE_GET_SYSCALL_INFO");
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
      at_entry(info);
    } else if (info.op == PTRACE_SYSCALL_INFO_EXIT) {
      at_exit(info);
    }
  }

  void at_entry(const CallInfo &info) {
    current_ = info;
    if (static_cast<long>(info.entry.nr) == mark) {
      in_function_ = !in_function_;
      return;
    }
    if (!in_function_ || is_own() || !is_meant_(info) || --left_ != 0) {
      return;
    }
    end_.reached = true;
    end_.call = "system call " + std::to_string(info.entry.nr) + " " + path();
    if (error_ == 0) {
      files::require(kill(child_, SIGKILL) == 0, "kill");
      killed_ = true;
    } else {
      failing_ = true;
      if (!is_made_) {
        skip_call();
      }
    }
  }

  void at_exit(const CallInfo &info) {
    if (std::exchange(failing_, false)) {
      set_result(-error_);
      return;
    }
    const auto number = static_cast<long>(current_.entry.nr);
    if (number == SYS_openat && in_function_ && info.exit.is_error == 0 && is_of_the_machine(path())) {
      own_.insert(static_cast<std::uint64_t>(info.exit.rval));
    }
    if (number == SYS_close) {
      own_.erase(current_.entry.args[0]);
    }
  }

  // A call on the description of the machine.
  bool is_own() const {
    const auto number = static_cast<long>(current_.entry.nr);
    return number == SYS_openat ? is_of_the_machine(path()) : own_.contains(current_.entry.args[0]);
  }

  static bool is_of_the_machine(const std::string &path) { return path.starts_with("/run/appliance/"); }

  // The path that the call is about, when it is an openat.
  std::string path() const {
    if (static_cast<long>(current_.entry.nr) != SYS_openat) {
      return "";
    }
    std::array<char, 128> bytes{};
    const iovec here{bytes.data(), bytes.size() - 1};
    const iovec there{reinterpret_cast<void *>(static_cast<std::uintptr_t>(current_.entry.args[1])),
                      bytes.size() - 1};
    if (process_vm_readv(child_, &here, 1, &there, 1, 0) < 0) {
      return "";
    }
    return bytes.data();
  }

#ifdef __x86_64__
  void skip_call() const {
    set_register(offsetof(user_regs_struct, orig_rax), -1);
  }
  void set_result(long result) const {
    set_register(offsetof(user_regs_struct, rax), result);
  }
  void set_register(std::size_t place, long value) const {
    files::require(ptrace(PTRACE_POKEUSER, child_, place, value) == 0, "PTRACE_POKEUSER");
  }
#else
  static void skip_call() {}
  static void set_result(long /*result*/) {}
#endif

  pid_t child_;
  std::function<bool(const CallInfo &)> is_meant_;
  int left_;
  int error_;
  bool is_made_;
  bool in_function_ = false;
  bool failing_ = false;
  bool killed_ = false;
  CallInfo current_{};
  std::set<std::uint64_t> own_;
  Interrupted end_;
};

Interrupted watched(const std::function<bool(const CallInfo &)> &is_meant, int n, int error, bool is_made,
                    const Function &function) {
  const Messages messages;
  const pid_t child = start(function, true, messages.file());
  Interrupted end = Watched(child, is_meant, n, error, is_made).run();
  end.messages = messages.text();
  return end;
}

} // namespace

bool can_kill_at_calls() {
  const pid_t child = fork();
  files::require(child >= 0, "fork");
  if (child == 0) {
    _exit(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 ? 0 : not_watched);
  }
  int status = 0;
  files::require(waitpid(child, &status, 0) == child, "waitpid");
  return status == 0;
}

bool can_fail_calls() {
#ifdef __x86_64__
  return can_kill_at_calls();
#else
  return false;
#endif
}

Interrupted killed_at(int n, const Function &function) {
  return watched([](const CallInfo &) { return true; }, n, 0, false, function);
}

Interrupted failed_at(int n, const CallKind &kind, int error, const Function &function) {
  const auto is_meant = [&kind](const CallInfo &info) {
    return std::ranges::find(kind.numbers, static_cast<long>(info.entry.nr)) != kind.numbers.end();
  };
  return watched(is_meant, n, error, kind.is_made, function);
}

Interrupted run_alone(const Function &function) {
  const Messages messages;
  const pid_t child = start(function, false, messages.file());
  int status = 0;
  files::require(waitpid(child, &status, 0) == child, "waitpid");
  Interrupted end;
  note_end(end, status);
  end.messages = messages.text();
  return end;
}

} // namespace nasshare::tests

// AddressSanitizer keeps back what was freed, to find who still uses it. All of it is copied with every
// child: 1 MiB is as much as these short runs need, and a third of the time.
extern "C" [[gnu::visibility("default")]] const char *__asan_default_options() {
  return "quarantine_size_mb=1";
}

// The real one flushes every disk of the computer that runs the tests. It stays a system call here.
extern "C" [[gnu::visibility("default")]] void sync() noexcept {
  constexpr int no_file = -1;
  syscall(SYS_syncfs, no_file);
}
