// The permissions of one account on several shares at once.
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/acl.h"
#include "people_list.h"
#include "share_record.h"

#include <algorithm>
#include <cstdio>

namespace nasshare::cli {
namespace {

struct Permission {
  std::string share;
  std::uint32_t code;
};

std::uint32_t permission_code(const std::string &word) {
  const Words words{"none", "read", "write", "deny"};
  const auto found = std::ranges::find(words, word);
  if (found == words.end()) {
    throw Usage("a permission is read, write, deny or none, not \"" + word + "\"");
  }
  return static_cast<std::uint32_t>(found - words.begin());
}

// A share's name may hold "=" itself.
Permission permission(const std::string &word) {
  const auto equals = word.rfind('=');
  if (equals == std::string::npos) {
    throw Usage("\"" + word + "\" is not of the form SHARE=PERMISSION");
  }
  return {word.substr(0, equals), permission_code(word.substr(equals + 1))};
}

std::vector<Permission> take_permissions(const Words &words) {
  std::vector<Permission> permissions;
  for (std::size_t i = 2; i < words.size(); ++i) {
    auto wanted = permission(words[i]);
    const auto is_same = [&](const Permission &earlier) { return earlier.share == wanted.share; };
    if (std::ranges::any_of(permissions, is_same)) {
      throw Usage("the share \"" + wanted.share + "\" is given twice");
    }
    permissions.push_back(std::move(wanted));
  }
  return permissions;
}

void expect_user(const std::string &name) {
  if (!name.empty() && name.front() == '@') {
    throw Refusal("permit takes a user, not a group");
  }
  if (accounts_of(to_access_list(name, false)) != Words{name}) {
    throw Refusal("no account can be named \"" + name + "\"");
  }
  if (!is_configured_domain_mode() && check_user(name.c_str()) != 1) {
    throw Refusal("no user is named \"" + name + "\"");
  }
}

// A USB disk is open to everyone whatever the catalogue says, so no permission on it would last.
bool takes_permissions(const Permission &wanted) {
  return insert_acnt_node(wanted.share.c_str(), wanted.code) != nullptr &&
         is_on_volume(LoadedCatalogue::share(wanted.share).path);
}

struct Split {
  std::vector<Permission> possible;
  Words without_permissions;
};

Split split(const std::vector<Permission> &permissions) {
  const LoadedCatalogue catalogue;
  Split result;
  for (const Permission &wanted : permissions) {
    if (takes_permissions(wanted)) {
      result.possible.push_back(wanted);
    } else {
      result.without_permissions.push_back(wanted.share);
    }
  }
  free_acnt_list();
  return result;
}

void change(const std::string &account, const std::vector<Permission> &permissions) {
  for (const Permission &wanted : permissions) {
    insert_acnt_node(wanted.share.c_str(), wanted.code);
  }
  if (with_catalogue([&] { return acnt_mod_share(account.c_str()); }) != 1) {
    throw Refusal("the permissions of \"" + account + "\" were not changed");
  }
}

// A share that nobody can enter any more is deleted with the change.
void print_deleted(const std::vector<Permission> &permissions) {
  const LoadedCatalogue catalogue;
  for (const Permission &wanted : permissions) {
    if (check_smb_share_name(wanted.share.c_str()) == nullptr) {
      std::printf("%s: deleted, nobody could enter it any more\n", wanted.share.c_str());
    }
  }
}

} // namespace

int permit(const Words &words) {
  const char *form = "permit ACCOUNT SHARE=read|write|deny|none...";
  expect(words, 3, std::max<std::size_t>(3, words.size()), form);
  const std::vector<Permission> permissions = take_permissions(words);
  expect_user(words[1]);
  const auto [possible, without_permissions] = split(permissions);
  if (!possible.empty()) {
    change(words[1], possible);
    print_deleted(possible);
  }
  for (const std::string &share : without_permissions) {
    std::printf("%s: takes no permission of an account\n", share.c_str());
  }
  return without_permissions.empty() ? done : refused;
}

} // namespace nasshare::cli
