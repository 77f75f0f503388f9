// check_user_group with many entries: each account is asked for once, or all of them by one walk, with the
// answers that asking for each would give.
#include "access_lists.h"
#include "appliance.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "next_definition.h"
#include "paths.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <pwd.h>
#include <string>

namespace nasshare::tests {
namespace {

int look_ups = 0;
bool lists_nothing = false; // as a name service that answers questions alone
bool walk_fails = false;

std::string account(int number) {
  return "account" + std::to_string(number);
}

void add_accounts(int count) {
  std::string passwd = read_file("/etc/passwd");
  for (int i = 0; i < count; ++i) {
    passwd += account(i) + ":x:" + std::to_string(3000 + i) + ":100::/:/bin/false\n";
  }
  Appliance{}.file("/etc/passwd", passwd);
}

// Each has its own reader, one that comes again and again, and one whom nobody knows.
void list_shares(int count) {
  for (int i = 0; i < count; ++i) {
    list_share(("Share" + std::to_string(i)).c_str(),
               {"#" + account(i) + "#,#alice#,#ghost#", "", "#nobody#"});
  }
}

void expect_known_readers(int count) {
  ASSERT_EQ(pss->count, count);
  int i = 0;
  for (const auto *share : nodes_of(*pss)) {
    EXPECT_EQ(share->read_list, "#" + account(i++) + "#,#alice#");
  }
}

TEST(RememberedAccounts, AreFewLookUps) {
  add_accounts(500);
  list_shares(500);
  look_ups = 0;
  check_user_group();
  EXPECT_LE(look_ups, 8);
  expect_known_readers(500);
}

TEST(RememberedAccounts, AreAskedForOnceEachWhereTheyAreNotListed) {
  add_accounts(200);
  list_shares(200);
  lists_nothing = true;
  look_ups = 0;
  check_user_group();
  EXPECT_EQ(look_ups, 202);
  expect_known_readers(200);
}

TEST(RememberedAccounts, AreAskedForAnewByTheNextCheck) {
  add_accounts(20);
  list_shares(20);
  check_user_group();
  Appliance{}.no_accounts();
  check_user_group();
  EXPECT_EQ(pss->count, 0);
}

TEST(RememberedAccounts, OfAWalkThatFailsAreDoubt) {
  Appliance::single_disks().file(smb_conf, "old");
  add_accounts(20);
  get_samba_info2();
  list_shares(20);
  walk_fails = true;
  check_user_group();
  expect_known_readers(20);
  EXPECT_EQ(create_smb_conf(), -1);
  EXPECT_EQ(read_file(smb_conf), "old");
}

} // namespace
} // namespace nasshare::tests

using namespace nasshare::tests;

// These win over the C library's.
extern "C" [[gnu::visibility("default")]] passwd *getpwnam(const char *name) {
  static auto *const look_up = next_definition<passwd *(const char *)>("getpwnam");
  ++look_ups;
  return look_up(name);
}

extern "C" [[gnu::visibility("default")]] passwd *getpwent() {
  static auto *const next = next_definition<passwd *()>("getpwent");
  errno = walk_fails ? EIO : errno;
  return walk_fails || lists_nothing ? nullptr : next();
}
