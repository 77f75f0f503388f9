// The shares that a real smbd lists to get_host_share_name.
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/special.h"
#include "samba_machine.h"

#include <algorithm>
#include <string>

namespace nasshare::tests {
namespace {

class RemoteBrowse : public SambaMachine {};

Names sorted_names() {
  Names names = listed_names();
  std::ranges::sort(names);
  return names;
}

TEST_F(RemoteBrowse, ListsTheDiskSharesOfAHostUntilItStops) {
  for (const char *name : {"Music", "R&B", "My Docs", "M\xC3\xBCsik", "print room", "Hidden$"}) {
    add(Share{name}.path(std::string("/mnt/HD/HD_a2/") + name).everyone());
  }
  start();
  EXPECT_EQ(get_host_share_name("127.0.0.1"), 1);
  EXPECT_EQ(sorted_names(), (Names{"Music", "My Docs", "M\xC3\xBCsik", "R&B"}));

  ASSERT_EQ(shell("smb stop").status, 0);
  EXPECT_EQ(get_host_share_name("127.0.0.1"), 0);
  EXPECT_EQ(sorted_names(), Names{});
}

TEST_F(RemoteBrowse, AHostThatDoesNotExistHasNoListing) {
  Insert_Name_Node("before");
  EXPECT_EQ(get_host_share_name("nosuch.invalid"), 0);
  EXPECT_EQ(sorted_names(), Names{});
}

} // namespace
} // namespace nasshare::tests
