// Measures calls of the library, inside a private machine and nowhere else; bench/run starts it.
//
//   bench-calls [--benchmark_...] [ROW...]       the rows whose names begin so, or all, and their floors
//   bench-calls [--benchmark_...] --alone ROW    that row
//   bench-calls --describe SHARES ACCOUNTS       only makes the machine
#include "machine.h"
#include "nasshare/catalogue.h"
#include "rows.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <iterator>
#include <set>
#include <string_view>
#include <unistd.h>

namespace nasshare::bench {
namespace {

using Words = std::vector<std::string>;

Rows all_rows() {
  Rows rows;
  for (const auto &part :
       {list_check_rows(), loading_rows(), storing_rows(), smb_conf_rows(), change_rows()}) {
    rows.insert(rows.end(), part.begin(), part.end());
  }
  return rows;
}

using Names = std::set<std::string>;

// The rows whose names begin so, or all, and what they are divided by.
Names begun_names(const Rows &rows, const Words &words) {
  Names names;
  for (const Row &row : rows) {
    const auto begins = [&](const std::string &word) { return row.name.starts_with(word); };
    if (words.empty() || std::ranges::any_of(words, begins)) {
      names.insert(row.name);
      std::ranges::transform(row.floors, std::inserter(names, names.end()), &Floor::row);
    }
  }
  return names;
}

bool has_row(const Rows &rows, const std::string &name) {
  return std::ranges::find(rows, name, &Row::name) != rows.end();
}

int run_rows(Words words) {
  const Rows rows = all_rows();
  const bool alone = std::erase(words, "--alone") != 0;
  if (alone && !(words.size() == 1 && has_row(rows, words[0]))) {
    std::fputs("--alone needs the whole name of one row\n", stderr);
    return 2;
  }
  const Names names = alone ? Names{words[0]} : begun_names(rows, words);
  for (const Row &row : rows) {
    if (names.contains(row.name)) {
      register_row(row);
    }
  }
  benchmark::AddCustomContext("sizeof_smb_share", std::to_string(sizeof(smb_share)));
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

int run(const Words &words) {
  if (words.size() == 3 && words[0] == "--describe") {
    describe({std::stoi(words[1]), std::stoi(words[2])});
    return 0;
  }
  return run_rows(words);
}

} // namespace
} // namespace nasshare::bench

// NOLINTNEXTLINE(bugprone-exception-escape): an exception ends the program as it should
int main(int argc, char **argv) {
  if (::access("/run/appliance/private", F_OK) != 0) {
    std::fputs("This program writes to /etc, /mnt and /dev and runs only inside a private machine: start "
               "bench/run\n",
               stderr);
    return 2;
  }
  benchmark::Initialize(&argc, argv);
  nasshare::bench::make_machine();
  return nasshare::bench::run({argv + 1, argv + argc});
}
