// nasshare permit: one account's permissions carried into several shares.
#include "nasshare_cli.h"
#include "paths.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

class Permit : public Nasshare {
protected:
  // read, write and deny of a share.
  static std::string lists(const std::string &share) {
    return shown(share, "read") + " | " + shown(share, "write") + " | " + shown(share, "deny");
  }
};

TEST_F(Permit, MovesTheAccountToTheListAskedFor) {
  for (const auto &[permission, expected] :
       {std::pair("read", "bob,alice |  | nobody"), std::pair("write", "bob | alice | nobody"),
        std::pair("deny", "bob |  | nobody,alice"), std::pair("none", "bob |  | nobody")}) {
    add({"Music", "/mnt/HD/HD_a2/music", "--read", "alice,bob"});
    succeed({"permit", "alice", std::string("Music=") + permission});
    EXPECT_EQ(lists("Music"), expected) << permission;
    succeed({"delete", "Music"});
  }
}

TEST_F(Permit, ChangesSeveralSharesAndStoresThemOnEveryVolume) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "alice,bob"});
  add({"Docs", "/mnt/HD/HD_a2/docs", "--write", "@staff"});
  add({"Photos", "/mnt/HD/HD_b2/photos", "--read", "bob"});
  succeed({"permit", "alice", "Music=write", "Docs=deny"});
  EXPECT_EQ(lists("Music"), "bob | alice | nobody");
  EXPECT_EQ(lists("Docs"), " | @staff | nobody,alice");
  EXPECT_EQ(lists("Photos"), "bob |  | nobody");
  const std::string stored = read_file(first_share_file);
  EXPECT_NE(stored.find("#alice#"), std::string::npos);
  EXPECT_EQ(stored, read_file(second_share_file));
}

TEST_F(Permit, HasTheServiceTakeTheChangeOnce) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "bob"});
  add({"Docs", "/mnt/HD/HD_a2/docs", "--read", "bob"});
  succeed({"permit", "alice", "Music=write", "Docs=write"});
  EXPECT_EQ(transcript(), "smbcom\nsmbcom\nsmbcom\n");
}

TEST_F(Permit, EveryoneBecomesEveryoneElse) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  succeed({"permit", "alice", "Music=read"});
  EXPECT_EQ(lists("Music"), "alice | bob,carol | nobody");
}

TEST_F(Permit, WhatEveryoneMayStays) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  succeed({"permit", "alice", "Music=write"});
  EXPECT_EQ(lists("Music"), " | everyone | ");
}

TEST_F(Permit, TheLastEqualsSignEndsTheName) {
  add({"a=read", "/mnt/HD/HD_a2/music", "--read", "bob"});
  succeed({"permit", "alice", "a=read=write"});
  EXPECT_EQ(lists("a=read"), "bob | alice | nobody");
}

TEST_F(Permit, AShareThatNobodyCanEnterIsDeletedAndNamed) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "alice"});
  add({"Docs", "/mnt/HD/HD_a2/docs", "--read", "alice,bob"});
  const Ended ended = nasshare({"permit", "alice", "Music=none", "Docs=none"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "Music: deleted, nobody could enter it any more\n");
  EXPECT_EQ(nasshare({"list"}).out, "Docs\t/mnt/HD/HD_a2/docs\t\n");
  EXPECT_TRUE(exists("/mnt/HD/HD_a2/music"));
}

TEST_F(Permit, AutomaticSharesAreNamedAndTheOthersChanged) {
  machine_.mount("/dev/sdc1", "/mnt/USB/HD_c1").shared_name("USBStick = HD_c1\n");
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "alice,bob"});
  const Ended ended = nasshare(
      {"permit", "alice", "USBStick=deny", "P2P=read", "aMule=read", "USBDisk1_1=read", "Music=write"});
  EXPECT_EQ(ended.status, refused);
  EXPECT_EQ(ended.out, "USBStick: takes no permission of an account\n"
                       "P2P: takes no permission of an account\n"
                       "aMule: takes no permission of an account\n"
                       "USBDisk1_1: takes no permission of an account\n");
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(lists("Music"), "bob | alice | nobody");
  EXPECT_EQ(lists("USBStick"), " | everyone | ");
}

TEST_F(Permit, OnAutomaticSharesOnlyNothingIsStored) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(nasshare({"permit", "alice", "P2P=read"}).status, refused);
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST_F(Permit, AnUnknownShareIsRefusedAndNothingChanged) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "bob"});
  expect_refusal({"permit", "alice", "Music=write", "Docs=read"}, "no share is named \"Docs\"");
  EXPECT_EQ(lists("Music"), "bob |  | nobody");
}

TEST_F(Permit, WhoIsNoUserIsRefused) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  expect_refusal({"permit", "dave", "Music=read"}, "no user is named \"dave\"");
  expect_refusal({"permit", "@staff", "Music=read"}, "permit takes a user, not a group");
  for (const std::string name : {"", "alice,bob", "everyone"}) {
    expect_refusal({"permit", name, "Music=read"}, "no account can be named \"" + name + "\"");
  }
  expect_refusal({"permit", "a#b", "Music=read"}, "no account can be named \"a#b\"");
}

TEST_F(Permit, ADomainUserNeedsNoLocalAccount) {
  machine_.config("/system_mgr/samba/ads_enable", "1").config("/system_mgr/samba/ads_workgroup", "CORP");
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "emil"});
  succeed({"permit", "dora", "Music=write"});
  EXPECT_EQ(lists("Music"), "emil | dora | nobody");
}

TEST(PermitUsage, IsExplained) {
  for (const std::vector<std::string> &words : {std::vector<std::string>{"permit"}, {"permit", "alice"}}) {
    expect_wrong_usage(words, "usage: nasshare permit ACCOUNT SHARE=read|write|deny|none...");
  }
  expect_wrong_usage({"permit", "alice", "Music"}, "\"Music\" is not of the form SHARE=PERMISSION");
  expect_wrong_usage({"permit", "alice", "Music=all"},
                     "a permission is read, write, deny or none, not \"all\"");
  expect_wrong_usage({"permit", "alice", "Music=read", "Music=deny"}, "the share \"Music\" is given twice");
}

} // namespace
} // namespace nasshare::tests
