// appliance-domain: single operations of the domain membership for scripts in the private machine. Prints the
// result; "-d" in front switches the library's debug output on.
#include "nasshare/nasshare.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace nasshare::appliance {
namespace {

struct Operation {
  std::string_view name;
  int (*run)();
};

int with_settings(int (*operation)()) {
  read_global_setting();
  return operation();
}

// The shares as the check leaves them: name, readers, writers and denied, separated by tabs.
int print_checked_shares() {
  get_samba_info();
  ads_check_user_group();
  const int count = pss->count;
  for (const auto *share = count > 0 ? pss->head : nullptr; share != nullptr; share = share->next) {
    std::printf("%s\t%s\t%s\t%s\n", share->name, share->read_list, share->write_list, share->invalid_users);
  }
  Free_All_List();
  return count;
}

constexpr Operation operations[] = {
    {"start", ads_start},
    {"stop", ads_stop},
    {"join", [] { return with_settings(ads_join_domain); }},
    {"ticket", [] { return with_settings(ads_kinit); }},
    {"check", print_checked_shares},
};

// Null when there is none of that name.
const Operation *operation_called(std::string_view name) {
  const auto *const found = std::ranges::find(operations, name, &Operation::name);
  return found != std::end(operations) ? found : nullptr;
}

} // namespace
} // namespace nasshare::appliance

int main(int argc, char **argv) {
  const bool debug = argc > 1 && std::string_view(argv[1]) == "-d";
  const auto *const operation =
      argc == (debug ? 3 : 2) ? nasshare::appliance::operation_called(argv[argc - 1]) : nullptr;
  if (operation == nullptr) {
    std::fputs("usage: appliance-domain [-d] start|stop|join|ticket|check\n", stderr);
    return 2;
  }
  smb_dbg_flag = debug ? 1 : 0;
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // in order with what its commands print
  std::printf("%d\n", operation->run());
  return 0;
}
