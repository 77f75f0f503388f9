#include "ads/domain_accounts.h"

#include "acl/known_entries.h"
#include "nasshare/acl.h"
#include "nasshare/ads.h"
#include "support/lines.h"
#include "support/linked_list.h"
#include "support/text.h"

using namespace nasshare;

bool nasshare::begins_with_own_name(std::string_view line) {
  auto own_name = view(pss->netbios_name);
  return !own_name.empty() && equals_ignoring_case(line.substr(0, own_name.size()), own_name);
}

namespace {

constexpr int most_users = 800;
constexpr int most_groups = 200;

// Whether the command lists exactly that name among its first lines; the lines passed over do not count.
template <class PassOver>
bool lists(const char *command, std::string_view name, int most_lines, PassOver pass_over) {
  CommandOutput listing(command);
  bool found = false;
  int count = 0;
  for (CommandLines lines(listing.get()); lines.next();) { // to the end, so that the command is not cut off
    if (!pass_over(lines.line())) {
      ++count;
      found = found || (count <= most_lines && lines.line() == name);
    }
  }
  return found;
}

bool domain_user_exists(std::string_view name) {
  return lists("wbinfo -u", name, most_users,
               [](std::string_view line) { return line == "krbtgt" || begins_with_own_name(line); });
}

bool domain_group_exists(std::string_view name) {
  return lists("wbinfo -g", name, most_groups, begins_with_own_name);
}

} // namespace

int ads_check_user(const char *name) {
  return name != nullptr && domain_user_exists(name) ? 1 : 0;
}

int ads_check_group(const char *name) {
  return name != nullptr && domain_group_exists(name) ? 1 : 0;
}

void ads_run_check_samba_list(char *list) {
  keep_known_entries(list, domain_user_exists, domain_group_exists);
}

void ads_check_user_group(void) {
  for (auto &share : each(*pss)) {
    ads_run_check_samba_list(share.read_list);
    ads_run_check_samba_list(share.write_list);
    ads_run_check_samba_list(share.invalid_users);
  }
  remove_empty_share_node();
}
