// How a row is measured: the CPU time of this process and the time on the wall by the benchmark library, the
// CPU time of the child processes apart.
#include "row.h"

#include "files.h"
#include "nasshare/catalogue.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace nasshare::bench {
namespace {

double nanoseconds(const timeval &time) {
  return 1e9 * static_cast<double>(time.tv_sec) + 1e3 * static_cast<double>(time.tv_usec);
}

double cpu_of_children() {
  rusage usage = {};
  tests::files::require(::getrusage(RUSAGE_CHILDREN, &usage) == 0, "getrusage");
  return nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime);
}

double resident_bytes() {
  std::ifstream statm("/proc/self/statm");
  double size = 0;
  double resident = 0;
  statm >> size >> resident;
  return resident * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

// What earlier calls left in the heap is given back first, and would be counted else.
double resident_bytes_per_share(const std::function<void()> &load) {
  Free_All_List();
  ::malloc_trim(0);
  const double before = resident_bytes();
  load();
  return (resident_bytes() - before) / pss->count;
}

// The name that the profile collects below.
[[gnu::noinline]] void measured(const std::function<void()> &call) {
  call();
  benchmark::ClobberMemory();
}

void run_before_each(benchmark::State &state, const Row &row, double &children) {
  state.PauseTiming();
  const double start = cpu_of_children();
  row.before_each();
  children -= cpu_of_children() - start;
  state.ResumeTiming();
}

// "own:walk/0/50 wall:..."
std::string label(const Row &row) {
  std::string text;
  for (const Floor &floor : row.floors) {
    text += (text.empty() ? "" : " ") + floor.by + ":" + floor.row;
  }
  return text;
}

void run(benchmark::State &state, const Row &row) {
  row.prepare();
  double children = -cpu_of_children();
  for ([[maybe_unused]] const auto iteration : state) {
    if (row.before_each) {
      run_before_each(state, row, children);
    }
    measured(row.call);
  }
  children += cpu_of_children();
  state.counters["children"] = children / static_cast<double>(state.iterations());
  if (row.tells_memory) {
    state.counters["resident"] = resident_bytes_per_share(row.call);
  }
  state.SetLabel(label(row));
}

} // namespace

std::string row_name(const std::string &name, const Size &size) {
  return name + "/" + std::to_string(size.shares) + "/" + std::to_string(size.accounts);
}

void register_row(const Row &row) {
  benchmark::RegisterBenchmark(row.name.c_str(), [row](benchmark::State &state) { run(state, row); });
}

} // namespace nasshare::bench
