#include "acl/account_walk.h"
#include "ads/domain_accounts.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "smbconf/domain_user.h"
#include "support/lines.h"
#include "support/owners.h"
#include "support/text.h"
#include "support/trouble.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace nasshare;

namespace {

constexpr uid_t guest_id = 501; // the guest account's user and group id in domain mode
constexpr std::int32_t first_domain_id = 10000;

// Never by way of a link: others may write into the folder above.
Descriptor open_folder(int above, const char *path) {
  return Descriptor(openat(above, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// A directory that is not there yet, for everybody.
Descriptor make_open(int above, const char *path) {
  bool made = mkdirat(above, path, 0777) == 0;
  auto folder = made ? open_folder(above, path) : Descriptor(-1);
  static_cast<void>(fchmod(folder.get(), 0777)); // whatever the umask is
  return folder;
}

// An existing directory is left alone, owner and mode included.
void make_for(const Descriptor &root, std::initializer_list<std::string_view> name, uid_t user, gid_t group) {
  Text<path_width> path;
  if (path.append_whole(name)) {
    auto folder = make_open(root.get(), path.c_str());
    static_cast<void>(fchown(folder.get(), user, group));
  }
}

void make_for_domain_users(const Descriptor &root) {
  make_for(root, {"nobody"}, guest_id, guest_id);
  CommandOutput users("wbinfo -z");
  for (CommandLines lines(users.get()); lines.next();) {
    auto user = parse_domain_user(lines.line());
    if (user && user->uid >= first_domain_id && user->gid >= first_domain_id) {
      make_for(root, {view(pss->ads_workgroup), "+", user->name}, static_cast<uid_t>(user->uid),
               static_cast<gid_t>(user->gid));
    }
  }
}

void make_for_local_accounts(const Descriptor &root) {
  constexpr std::array<std::string_view, 5> without{"root", "admin", "ftp", "sshd", "squeezecenter"};
  each_account([&](const passwd &account) {
    if (std::ranges::find(without, std::string_view(account.pw_name)) == without.end()) {
      make_for(root, {account.pw_name}, account.pw_uid, account.pw_gid);
    }
  });
}

} // namespace

std::optional<DomainUser> nasshare::parse_domain_user(std::string_view line) {
  if (begins_with_own_name(line) || line == "krbtgt" || contains(line, "Error looking up domain users")) {
    return std::nullopt;
  }
  DomainUser user;
  user.name = take_word(line);
  bool complete = !user.name.empty() && take_decimal(line, user.uid) && take_decimal(line, user.gid);
  return complete ? std::optional(user) : std::nullopt;
}

void create_recycle_user_directory(const char *directory) {
  if (!given(directory)) {
    return;
  }
  const TroubleApart apart; // a user without a directory is no reason to publish nothing
  make_open(AT_FDCWD, directory);
  const auto root = open_folder(AT_FDCWD, directory);
  if (pss->ads_enable == 1) {
    make_for_domain_users(root);
  } else {
    make_for_local_accounts(root);
  }
}
