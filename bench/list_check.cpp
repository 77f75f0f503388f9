// check_user_group, divided by one walk of the account database: every account has to be known once.
#include "appliance.h"
#include "machine.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "rows.h"

#include <benchmark/benchmark.h>
#include <pwd.h>
#include <stdexcept>

namespace nasshare::bench {
namespace {

void walk_accounts() {
  ::setpwent();
  while (const auto *const account = ::getpwent()) {
    benchmark::DoNotOptimize(account->pw_name);
  }
  ::endpwent();
}

std::string walk_row(int accounts) {
  return row_name("account_walk", {0, accounts});
}

std::string stored_list() {
  if (create_HD_xml(tests::temporary_share_file) != 0) {
    throw std::runtime_error("the shares were not stored");
  }
  return tests::read_file(tests::temporary_share_file);
}

// A list that was checked has to stay as it is, so that every check has the same to do.
void prepare_check(const Size &size, Lists lists) {
  describe_and_load(size, lists);
  const std::string loaded = stored_list();
  check_user_group();
  if (stored_list() != loaded) {
    throw std::runtime_error("the check of the lists changes them again");
  }
}

Row check_row(const std::string &name, const Size &size, Lists lists) {
  return {.name = row_name(name, size),
          .floors = {{walk_row(size.accounts)}},
          .prepare = [=] { prepare_check(size, lists); },
          .call = check_user_group};
}

} // namespace

Rows list_check_rows() {
  Rows rows;
  for (const int accounts : {50, 500, 5000}) {
    const auto prepare = [=] { describe({0, accounts}); };
    rows.push_back({.name = walk_row(accounts), .prepare = prepare, .call = walk_accounts});
    rows.push_back(check_row("check_user_group", {1000, accounts}, Lists::usual));
  }
  rows.push_back(check_row("check_user_group_full_lists", {16, 5000}, Lists::full));
  return rows;
}

} // namespace nasshare::bench
