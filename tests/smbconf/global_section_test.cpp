// The global section of smb.conf.
#include "fields.h"
#include "nasshare/catalogue.h"
#include "smb_conf.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

// The line of the generated file that begins so.
std::string line(const std::string &beginning) {
  const std::vector<std::string> lines = lines_beginning(generated(), beginning);
  return lines.empty() ? "no such line" : lines.front();
}

TEST(GlobalSection, EmptySettingsLeaveTheirLinesEmpty) {
  EXPECT_EQ(generated().substr(0, 45), "[ global ]\nnetbios name = \nserver string = \nv");
  EXPECT_EQ(line("workgroup = "), "workgroup = ");
}

TEST(GlobalSection, ALineEndInASettingBeginsNoOptionOfItsOwn) {
  outside_a_domain();
  put(pss->server_string, "NAS\nroot preexec = touch /tmp/x");
  EXPECT_EQ(line("server string = "), "server string = NAS root preexec = touch /tmp/x");
}

TEST(GlobalSection, SettingsAreWrittenAsTheyAre) {
  const std::string name = "%s%n\"\\" + std::string(505, 'n');
  ASSERT_EQ(name.size(), 511U);
  put(pss->netbios_name, name);
  put(pss->server_string, name);
  put(pss->workgroup, name);
  EXPECT_EQ(line("netbios name"), "netbios name = " + name);
  EXPECT_EQ(line("server string"), "server string = " + name);
  EXPECT_EQ(line("workgroup"), "workgroup = " + name);
}

TEST(GlobalSection, DomainSettingsAreWrittenAsTheyAre) {
  in_the_domain();
  const std::string value(511, 'd');
  put(pss->ads_workgroup, value);
  put(pss->ads_realm, value);
  put(pss->ads_pwd_server, value);
  EXPECT_EQ(line("workgroup"), "workgroup = " + value);
  EXPECT_EQ(line("realm"), "realm = " + value);
  EXPECT_EQ(line("password server"), "password server = " + value);
}

TEST(GlobalSection, EveryModeButOneIsOutsideADomain) {
  in_the_domain();
  pss->ads_enable = 2;
  EXPECT_EQ(line("workgroup"), "workgroup = unused");
  EXPECT_EQ(line("security"), "security = user");
  EXPECT_EQ(line("winbind"), "no such line");
}

TEST(GlobalSection, NamesTheDfsRootOnlyWhenItIsOn) {
  outside_a_domain();
  for (const int enable : {0, 1, 2}) {
    SCOPED_TRACE(enable);
    pss->dfs_enable = enable;
    EXPECT_EQ(line("host msdfs"), enable == 1 ? "host msdfs = yes" : "no such line");
  }
}

TEST(GlobalSection, NeverHoldsTheDomainsPassword) {
  in_the_domain();
  const std::string text = generated();
  EXPECT_EQ(text.find("top secret"), std::string::npos);
  EXPECT_EQ(text.find("administrator"), std::string::npos);
}

} // namespace
} // namespace nasshare::tests
