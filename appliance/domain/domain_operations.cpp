// appliance-domain: single operations of the domain membership for scripts in the private machine. Prints the
// result; "-d" in front switches the library's debug output on.
#include "nasshare/nasshare.h"

#include <cstdio>
#include <string_view>

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
  auto count = pss->count;
  auto *share = pss->head;
  for (int i = 0; i < count; ++i, share = share->next) {
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

} // namespace

int main(int argc, char **argv) {
  bool debug = argc > 1 && std::string_view(argv[1]) == "-d";
  smb_dbg_flag = debug ? 1 : 0;
  if (argc == (debug ? 3 : 2)) {
    for (const auto &operation : operations) {
      if (operation.name == argv[argc - 1]) {
        std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // in order with what its commands print
        std::printf("%d\n", operation.run());
        return 0;
      }
    }
  }
  std::fputs("usage: appliance-domain [-d] start|stop|join|ticket|check\n", stderr);
  return 2;
}
