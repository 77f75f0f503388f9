// Does the domain know the account? As "wbinfo -u" and "wbinfo -g" list them, within bounds.
#include "acl/known_entries.h"
#include "base/lines.h"
#include "base/linked_list.h"
#include "model/load_verdict.h"
#include "model/skipped_accounts.h"
#include "nasshare/acl.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

constexpr int most_users = 800;
constexpr int most_groups = 200;

// Whether the command lists exactly that name among its first lines; the lines passed over do not count.
template <class PassOver>
bool lists_or_note(const char *command, std::string_view name, int most_lines, PassOver pass_over) {
  bool is_found = false;
  int count = 0;
  // A name that was not printed any more may be that of somebody who is denied.
  CommandLines lines(command, {.is_doubtful = true});
  for (const auto line : lines) { // to the end, so that the command is not cut off
    if (!pass_over(line)) {
      ++count;
      is_found = is_found || (count <= most_lines && line == name);
    }
  }
  return is_found;
}

bool domain_user_exists_or_note(std::string_view name) {
  return lists_or_note("wbinfo -u", name, most_users, is_skipped_domain_user);
}

bool domain_group_exists_or_note(std::string_view name) {
  return lists_or_note("wbinfo -g", name, most_groups, begins_with_own_name);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_check_user(const char *name) {
  const LoadWatch watch;
  return name != nullptr && domain_user_exists_or_note(name) ? 1 : 0;
}

int ads_check_group(const char *name) {
  const LoadWatch watch;
  return name != nullptr && domain_group_exists_or_note(name) ? 1 : 0;
}

void ads_run_check_samba_list(char *list) {
  const LoadWatch watch;
  keep_known_entries(list, domain_user_exists_or_note, domain_group_exists_or_note);
}

void ads_check_user_group(void) {
  const LoadWatch watch;
  for (auto &share : each(*pss)) {
    keep_known_entries(share, domain_user_exists_or_note, domain_group_exists_or_note);
  }
  remove_empty_share_node();
}
