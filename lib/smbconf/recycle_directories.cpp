// Every user's own directory in a recycle folder.
#include "acl/access_list.h"
#include "acl/account_walk.h"
#include "acl/everyone.h"
#include "base/lines.h"
#include "base/owners.h"
#include "base/text.h"
#include "base/watch.h"
#include "model/domain_mode.h"
#include "model/skipped_accounts.h"
#include "nasshare/smbconf.h"
#include "smbconf/domain_users.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

constexpr uid_t guest_id = 501; // the guest account's user and group id in domain mode
constexpr std::int32_t first_domain_id = 10000;

// Never by way of a link: others may write into the folder above.
Descriptor open_folder(int above, const char *path) {
  return Descriptor(openat(above, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// A directory that is not there yet, for everybody.
Descriptor make_open(int above, const char *path) {
  const bool is_made = mkdirat(above, path, 0777) == 0;
  auto folder = is_made ? open_folder(above, path) : Descriptor(-1);
  static_cast<void>(fchmod(folder.get(), 0777)); // whatever the umask is; what does not work shows in the bin
  return folder;
}

// Whether the name is that of a folder in the root, and not of one elsewhere.
bool is_folder_name(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && !contains(name, "/");
}

// An existing directory is left alone, owner and mode included.
void make_for(const Descriptor &root, std::initializer_list<std::string_view> pieces, uid_t user,
              gid_t group) {
  Text<path_width> name;
  if (name.append_whole(pieces) && is_folder_name(name.view())) {
    const auto folder = make_open(root.get(), name.c_str());
    static_cast<void>(fchown(folder.get(), user, group)); // what does not work shows in the bin
  }
}

void make_for_domain_users(const Descriptor &root) {
  make_for(root, {guest}, guest_id, guest_id);
  for (const auto line : CommandLines("wbinfo -z")) {
    const auto user = domain_user_of_line(line);
    if (user && user->uid >= first_domain_id && user->gid >= first_domain_id) {
      make_for(root, {view(pss->ads_workgroup), "+", user->name}, static_cast<uid_t>(user->uid),
               static_cast<gid_t>(user->gid));
    }
  }
}

void make_for_local_accounts(const Descriptor &root) {
  each_account_or_note([&root](const passwd &account) {
    if (!is_among(accounts_without_recycle_folder, account.pw_name)) {
      make_for(root, {account.pw_name}, account.pw_uid, account.pw_gid);
    }
  });
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void create_recycle_user_directory(const char *directory) {
  if (!is_given(directory)) {
    return;
  }
  const Watch watch(Watch::Scope::apart); // a user without a directory is no reason to publish nothing
  make_open(AT_FDCWD, directory);
  const auto root = open_folder(AT_FDCWD, directory);
  if (is_domain_mode()) {
    make_for_domain_users(root);
  } else {
    make_for_local_accounts(root);
  }
}
