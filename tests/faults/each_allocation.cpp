// A row of children, each of which goes through as many failing allocations as it survives.
#include "each_allocation.h"

#include "failing_memory.h"
#include "files.h"

#include <cstddef>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace nasshare::tests {

namespace {

// What a child and its parent both see.
struct Progress {
  int n = 0;            // the allocation that fails, from 1
  bool reached = false; // it came to pass
};

class SharedProgress {
public:
  SharedProgress()
      : progress_(static_cast<Progress *>(
            mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
    files::require(progress_ != MAP_FAILED, "mmap");
  }
  ~SharedProgress() { munmap(progress_, sizeof(Progress)); }
  SharedProgress(const SharedProgress &) = delete;
  SharedProgress &operator=(const SharedProgress &) = delete;
  Progress *operator->() const { return progress_; }

private:
  Progress *progress_;
};

// What a child found, for its parent: number and text of each finding, both ended by a null byte.
class Report {
public:
  Report() : file_(memfd_create("report", MFD_CLOEXEC)) { files::require(file_ >= 0, "memfd_create"); }
  ~Report() { close(file_); }
  Report(const Report &) = delete;
  Report &operator=(const Report &) = delete;

  void add(int n, const std::string &wrong) const {
    if (!wrong.empty()) {
      const std::string entry = std::to_string(n) + '\0' + wrong + '\0';
      files::require(write(file_, entry.data(), entry.size()) == static_cast<ssize_t>(entry.size()), "write");
    }
  }

  void move_to(Findings &findings, const std::string &shortage) const {
    std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
    files::require(pread(file_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()), "pread");
    std::istringstream entries(text);
    for (std::string n, wrong; std::getline(entries, n, '\0') && std::getline(entries, wrong, '\0');) {
      findings.add(shortage + n, wrong);
    }
    files::require(ftruncate(file_, 0) == 0 && lseek(file_, 0, SEEK_SET) == 0, "ftruncate");
  }

private:
  int file_;
};

// The messages of the runs before say nothing about the next one.
void forget_messages() {
  files::require(ftruncate(STDERR_FILENO, 0) == 0 && lseek(STDERR_FILENO, 0, SEEK_SET) == 0, "ftruncate");
}

Interrupted run_short(int n, Shortage shortage, bool *reached, const Function &run) {
  fail_allocation(n, shortage, reached);
  const int answer = run();
  fail_no_allocation();
  Interrupted end;
  end.reached = *reached;
  end.answered = true;
  end.answer = answer;
  return end;
}

} // namespace

Endured fail_each_allocation(const std::function<void()> &begin, const Function &run,
                             const std::function<std::string(const Interrupted &)> &judge) {
  const SharedProgress progress;
  const Report report;
  const auto go_on = [&](Shortage shortage) {
    do {
      ++progress->n;
      progress->reached = false;
      forget_messages();
      begin();
      const Interrupted end = run_short(progress->n, shortage, &progress->reached, run);
      if (end.reached) {
        report.add(progress->n, judge(end));
      }
    } while (progress->reached);
    return 1;
  };

  Endured endured;
  for (const auto &[shortage, name] :
       {std::pair{Shortage::once, "only "}, std::pair{Shortage::from_then_on, "from "}}) {
    progress->n = 0;
    Interrupted end;
    do {
      end = run_alone([&] { return go_on(shortage); });
      report.move_to(endured.findings, name);
      if (!end.answered) {
        endured.findings.add(name + std::to_string(progress->n), judge(end));
      }
    } while (!end.answered && progress->reached);
    endured.interruptions += progress->n - 1;
  }
  return endured;
}

} // namespace nasshare::tests
