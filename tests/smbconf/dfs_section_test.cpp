// The section of the DFS root closes smb.conf.
#include "appliance.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "share.h"
#include "smb_conf.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *local_root = "\n[ DFS ]\n"
                                   "comment = Samba MSDFS Server\n"
                                   "path = /etc/dfsroot\n"
                                   "browseable = yes\n"
                                   "public = yes\n"
                                   "read list =\n"
                                   "write list = \"nobody\",\"@allaccount\"\n"
                                   "invalid users =\n"
                                   "valid users = \"nobody\",\"@allaccount\"\n"
                                   "msdfs root = yes\n";

TEST(DfsSection, FollowsAnEmptyCatalogue) {
  pss->dfs_enable = 1;
  EXPECT_EQ(generated_sections(), local_root);
}

TEST(DfsSection, LetsTheDomainsUsersInInADomain) {
  in_the_domain();
  pss->dfs_enable = 1;
  EXPECT_EQ(generated_sections(), "\n[ DFS ]\n"
                                  "comment = Samba MSDFS Server\n"
                                  "path = /etc/dfsroot\n"
                                  "browseable = yes\n"
                                  "public = yes\n"
                                  "read list =\n"
                                  "write list = \"nobody\",\"+CORP+Domain Users\"\n"
                                  "invalid users =\n"
                                  "valid users = \"nobody\",\"+CORP+Domain Users\"\n"
                                  "msdfs root = yes\n");
}

TEST(DfsSection, OnlyOneSwitchesItOn) {
  for (const int enable : {0, 2, -1}) {
    pss->dfs_enable = enable;
    EXPECT_EQ(generated_sections(), "");
  }
}

TEST(DfsSection, StandsBehindTheRecycleBins) {
  Appliance{}.folder("/mnt/HD/HD_a2");
  volumes_present(1, 1);
  pss->dfs_enable = 1;
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/music").everyone().recycle(1));
  const std::string text = generated_sections();
  const std::string end = "path = /mnt/HD/HD_a2/recycle/%u\n"
                          "guest ok = yes\n"
                          "writable = yes\n"
                          "valid users = \"nobody\",\"@allaccount\"\n" +
                          std::string(local_root);
  ASSERT_GE(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST(DfsSection, CarriesALongDomainNameWhole) {
  in_the_domain();
  pss->dfs_enable = 1;
  const std::string name(511, 'D');
  put(pss->ads_workgroup, name);
  EXPECT_NE(generated_sections().find("\nvalid users = \"nobody\",\"+" + name + "+Domain Users\"\nmsdfs"),
            std::string::npos);
}

} // namespace
} // namespace nasshare::tests
