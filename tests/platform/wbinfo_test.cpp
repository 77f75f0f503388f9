// The command wbinfo in front of the stock one.
#include "appliance.h"
#include "service_commands.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

class Wbinfo : public testing::Test {
protected:
  // The stock wbinfo and getent as a domain member has them.
  Wbinfo() {
    machine_.command("getent", recording("domain/getent-passwd-winbind.stdout"))
        .command("wbinfo", recording("domain/wbinfo-u.stdout"), 7, "stock\n");
  }

  static Ended wbinfo(const std::string &options) {
    return shell("PATH=" + commands + ":$PATH; wbinfo " + options);
  }

  Appliance machine_;
};

TEST_F(Wbinfo, ListsUsersWithTheirIds) {
  machine_.command("wbinfo").command("getent", "alice:*:10000:10001:Alice A:/home/winnt/CORP/alice:/bin/sh\n"
                                               "bob:*:10002:10001::/home/winnt/CORP/bob:/bin/sh\n");
  const Ended ended = wbinfo("-z");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "alice 10000 10001\nbob 10002 10001\n");
  EXPECT_EQ(transcript(), "wbinfo -u\ngetent -s winbind passwd\n");
}

TEST_F(Wbinfo, ListsTheUsersThatTheStockOneLists) {
  machine_.command("wbinfo");
  const Ended listed = shell("PATH=" + commands + ":$PATH; wbinfo -z | cut -d' ' -f1 | sort");
  const Ended recorded =
      shell("sort " PROJECT_FOLDER "/tests/recordings/domain/wbinfo-u.stdout | grep -v ' '");
  EXPECT_EQ(listed.out, recorded.out);
  EXPECT_NE(listed.out, "");
}

TEST_F(Wbinfo, LeavesOutANameWithABlank) {
  machine_.command("wbinfo").command("getent",
                                     "mary ann:*:10000:10001::/:/bin/sh\nbob:*:10002:10001::/:/bin/sh\n");
  EXPECT_EQ(wbinfo("-z").out, "bob 10002 10001\n");
}

TEST_F(Wbinfo, WithoutWinbinddItFailsAsTheStockOneDoes) {
  machine_.command("wbinfo", "", 1, recording("domain/wbinfo-u-no-winbindd.stderr"));
  const Ended ended = wbinfo("-z");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, recording("domain/wbinfo-u-no-winbindd.stderr"));
}

TEST_F(Wbinfo, EveryOtherOptionIsTheStockOnes) {
  const Ended ended = wbinfo("-u --domain 'A B'");
  EXPECT_EQ(ended.status, 7);
  EXPECT_EQ(ended.out, recording("domain/wbinfo-u.stdout"));
  EXPECT_EQ(ended.err, "stock\n");
  EXPECT_EQ(transcript(), "wbinfo -u --domain A B\n");
}

TEST_F(Wbinfo, WithoutTheStockOneItSaysSo) {
  machine_.no_command("wbinfo");
  const Ended ended = wbinfo("-u");
  EXPECT_EQ(ended.status, 127);
  EXPECT_EQ(ended.err, "wbinfo: winbind is not installed\n");
}

} // namespace
} // namespace nasshare::tests
