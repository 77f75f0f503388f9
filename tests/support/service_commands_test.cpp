// The service commands smbcv and smbcom, and a developer's own build of them.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/support.h"
#include "output.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

struct Service {
  std::string name;
  int (*run)();
};

std::ostream &operator<<(std::ostream &stream, const Service &service) {
  return stream << service.name;
}

class ServiceCommand : public testing::TestWithParam<Service> {
protected:
  const std::string name = GetParam().name;

  int run(int flag) {
    smb_dbg_flag = flag;
    return GetParam().run();
  }
  // An own build in the current directory.
  void have_own_build(mode_t mode = 0755) {
    Appliance{}.file("/tmp/own/" + name,
                     "#!/bin/sh\necho \"./" + name + " $*\" >>/run/appliance/transcript\nexit 7\n", mode);
    ASSERT_EQ(chdir("/tmp/own"), 0);
  }
};

INSTANTIATE_TEST_SUITE_P(Service, ServiceCommand,
                         testing::Values(Service{"smbcv", run_smbcv}, Service{"smbcom", run_smbcom}),
                         [](const auto &suite) { return suite.param.name; });

TEST_P(ServiceCommand, IsFoundOnTheSearchPathAndHasNoArguments) {
  Appliance{}.command(name);
  EXPECT_EQ(run(0), 0);
  EXPECT_EQ(transcript(), name + "\n");
}

TEST_P(ServiceCommand, HandsBackTheShellsStatus) {
  Appliance{}.command(name, "", 3);
  const int status = run(0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 3);
}

TEST_P(ServiceCommand, PrintsWhatTheCommandPrintsAndNothingElse) {
  Appliance{}.command(name, "reloaded\n");
  expect_output([] { GetParam().run(); }, [](int /*flag*/) { return "reloaded\n"; });
}

TEST_P(ServiceCommand, MissingCommandIsTheShellsAffair) {
  Appliance{}.no_command(name);
  Captured captured;
  const int status = run(0);
  EXPECT_EQ(captured.out(), "");
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 127);
}

TEST_P(ServiceCommand, OwnBuildIsTakenWhenTheFlagIsExactlyOne) {
  have_own_build();
  const int status = run(1);
  EXPECT_EQ(transcript(), "./" + name + " -d\n");
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_P(ServiceCommand, OwnBuildIsNotTakenForAnyOtherFlag) {
  have_own_build();
  for (const int flag : {0, 2, -1}) {
    EXPECT_EQ(run(flag), 0);
  }
  EXPECT_EQ(transcript(), name + "\n" + name + "\n" + name + "\n");
}

TEST_P(ServiceCommand, FlagOneWithoutAnOwnBuildTakesTheInstalledCommand) {
  Appliance{}.folder("/tmp/own");
  ASSERT_EQ(chdir("/tmp/own"), 0);
  EXPECT_EQ(run(1), 0);
  EXPECT_EQ(transcript(), name + "\n");
}

TEST_P(ServiceCommand, OwnBuildNeedsOnlyToExist) {
  have_own_build(0644);
  Captured captured;
  const int status = run(1);
  captured.stop();
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(WEXITSTATUS(status), 126) << "the shell cannot run it";
}

TEST(ServiceCommands, EachLooksForItsOwnBuildOnly) {
  Appliance{}.file("/tmp/own/smbcom", "#!/bin/sh\nexit 7\n", 0755);
  ASSERT_EQ(chdir("/tmp/own"), 0);
  smb_dbg_flag = 1;
  EXPECT_EQ(run_smbcv(), 0);
  EXPECT_EQ(transcript(), "smbcv\n");
  EXPECT_EQ(WEXITSTATUS(run_smbcom()), 7);
}

} // namespace
} // namespace nasshare::tests
