// /tmp is open to everybody: what somebody has put there under the name of the temporary share XML is neither
// followed nor in the way of a change.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

constexpr uid_t somebody = 1000;

Appliance volumes() {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/tmp", 01777)
      .file("/etc/secret", "secret", 0600)
      .file("/home/planted.xml", "<config/>");
}

void expect_stored() {
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Music").write("#alice#")), 1);
  EXPECT_NE(read_file(first_share_file).find("<name>Music</name>"), std::string::npos);
}

void expect_added() {
  expect_stored();
  EXPECT_FALSE(exists(temporary_share_file));
  EXPECT_EQ(read_file("/etc/secret"), "secret");
}

void expect_not_spread() {
  cp_xml_to_hidden();
  EXPECT_EQ(read_file(first_share_file), "old");
}

TEST(PlantedInTheWayOfAChange, ASymbolicLink) {
  volumes().link("/etc/secret", temporary_share_file);
  expect_added();
}

TEST(PlantedInTheWayOfAChange, AHardLink) {
  volumes().file("/tmp/secret", "secret");
  ASSERT_EQ(link("/tmp/secret", temporary_share_file), 0);
  expect_added();
  EXPECT_EQ(read_file("/tmp/secret"), "secret");
}

TEST(PlantedInTheWayOfAChange, AnEmptyFolder) {
  volumes().folder(temporary_share_file);
  expect_added();
}

TEST(PlantedInTheWayOfAChange, AFolderWithSomethingInIt) {
  volumes().file("/tmp/.smb.xml/planted", "x");
  expect_added();
}

TEST(PlantedInTheWayOfAChange, APipe) {
  volumes();
  ASSERT_EQ(mkfifo(temporary_share_file, 0666), 0);
  expect_added();
}

TEST(PlantedInTheWayOfAChange, AFileOfSomebodyElse) {
  volumes().file(temporary_share_file, "<config/>", 0666);
  ASSERT_EQ(chown(temporary_share_file, somebody, somebody), 0);
  expect_added();
}

TEST(PlantedInTheWayOfAChange, ThePlainNameOfASuccessor) {
  volumes().file("/tmp/.smb.xml.new/planted", "x");
  expect_added();
}

TEST(PlantedInTheWayOfAChange, FoldersWithoutEnd) {
  volumes();
  const pid_t planter = fork();
  if (planter == 0) {
    EXPECT_EQ(setuid(somebody), 0);
    for (;;) {
      mkdir(temporary_share_file, 0777);
    }
  }
  for (int i = 0; i < 20; ++i) {
    expect_stored();
    EXPECT_EQ(del_share("Music"), 1);
  }
  EXPECT_EQ(kill(planter, SIGKILL), 0);
  EXPECT_EQ(waitpid(planter, nullptr, 0), planter);
}

TEST(PlantedToBeSpread, ASymbolicLinkIsNot) {
  volumes().shares("/mnt/HD_a4", "old").link("/home/planted.xml", temporary_share_file);
  expect_not_spread();
}

TEST(PlantedToBeSpread, AFileWithASecondNameIsNot) {
  volumes().shares("/mnt/HD_a4", "old").file("/tmp/first", "<config/>");
  ASSERT_EQ(link("/tmp/first", temporary_share_file), 0);
  expect_not_spread();
}

TEST(PlantedToBeSpread, AFileOfSomebodyElseIsNot) {
  volumes().shares("/mnt/HD_a4", "old").file(temporary_share_file, "<config/>");
  ASSERT_EQ(chown(temporary_share_file, somebody, somebody), 0);
  expect_not_spread();
}

TEST(PlantedToBeSpread, APipeIsNotAndDoesNotHang) {
  volumes().shares("/mnt/HD_a4", "old");
  ASSERT_EQ(mkfifo(temporary_share_file, 0666), 0);
  expect_not_spread();
}

} // namespace
} // namespace nasshare::tests
