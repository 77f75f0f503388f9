// Who can really do what on a share, as the access lists say.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "samba_machine.h"

#include <string>

namespace nasshare::tests {
namespace {

class Access : public SambaMachine {};

Share music() {
  return Share{"Music"}.path("/mnt/HD/HD_a2/Music");
}

TEST_F(Access, TheWriterWrites) {
  serve(music().read("#bob#").write("#alice#"));
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Access, TheReaderReadsOnly) {
  serve(music().read("#bob#").write("#alice#"));
  EXPECT_EQ(access("bob", "Music"), "read");
}

TEST_F(Access, WhoIsInNoListIsDenied) {
  serve(music().read("#bob#").write("#alice#"));
  EXPECT_EQ(access("carol", "Music"), "denied");
}

TEST_F(Access, TheGuestIsDeniedWhereUsersAreNamed) {
  serve(music().read("#bob#").write("#alice#"));
  EXPECT_EQ(access(guest, "Music"), "denied");
}

TEST_F(Access, AMemberOfAWritingGroupWrites) {
  serve(music().write("#@staff#"));
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access("bob", "Music"), "write");
}

TEST_F(Access, AMemberOfAReadingGroupReadsOnly) {
  serve(music().read("#@staff#").write("#carol#"));
  EXPECT_EQ(access("bob", "Music"), "read");
  EXPECT_EQ(access("carol", "Music"), "write");
}

TEST_F(Access, WhoIsInNoListedGroupIsDenied) {
  serve(music().write("#@staff#"));
  EXPECT_EQ(access("carol", "Music"), "denied");
}

TEST_F(Access, AWriterWhoseGroupReadsWrites) {
  serve(music().read("#@staff#").write("#alice#"));
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Access, EveryoneIncludesTheGuest) {
  serve(music().everyone());
  EXPECT_EQ(access("carol", "Music"), "write");
  EXPECT_EQ(access(guest, "Music"), "write");
}

TEST_F(Access, EveryoneIncludesAnUnknownUserAsTheGuest) {
  serve(music().everyone());
  EXPECT_EQ(access("stranger", "Music"), "write");
}

TEST_F(Access, AShareWithoutListsIsOpenToEveryone) {
  serve(music());
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access(guest, "Music"), "write");
}

TEST_F(Access, EveryoneMayReadWhatOneMayWrite) {
  serve(music().read("#nobody#,#@allaccount#").write("#alice#"));
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access("bob", "Music"), "read");
  EXPECT_EQ(access(guest, "Music"), "read");
}

TEST_F(Access, ADeniedUserIsDeniedThoughTheGroupWrites) {
  serve(music().write("#@allaccount#").deny("#carol#"));
  EXPECT_EQ(access("carol", "Music"), "denied");
  EXPECT_EQ(access("alice", "Music"), "write");
}

TEST_F(Access, ADeniedGroupIsDeniedThoughTheUserWrites) {
  serve(music().write("#bob#,#carol#").deny("#@staff#"));
  EXPECT_EQ(access("bob", "Music"), "denied");
  EXPECT_EQ(access("carol", "Music"), "write");
}

TEST_F(Access, EveryoneExceptTheDeniedWrites) {
  serve(music().everyone().deny("#carol#"));
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access("carol", "Music"), "denied");
  EXPECT_EQ(access(guest, "Music"), "denied");
}

TEST_F(Access, ADenyListAloneLetsNobodyIn) {
  serve(music().deny("#carol#"));
  EXPECT_EQ(access("alice", "Music"), "denied");
  EXPECT_EQ(access("carol", "Music"), "denied");
  EXPECT_EQ(access(guest, "Music"), "denied");
}

TEST_F(Access, AWrongPasswordIsNoGuest) {
  serve(music().everyone());
  const Ended ended = shell("smbclient -s /dev/null -U alice%wrong //127.0.0.1/Music -c ls");
  EXPECT_NE(ended.status, 0);
  EXPECT_NE(ended.out.find("NT_STATUS_LOGON_FAILURE"), std::string::npos) << ended.out;
}

TEST_F(Access, AShareOfTheSecondVolumeIsServedTheSameWay) {
  serve(Share{"Photos"}.path("/mnt/HD/HD_b2/Photos").read("#bob#").write("#alice#"));
  EXPECT_EQ(access("alice", "Photos"), "write");
  EXPECT_EQ(access("bob", "Photos"), "read");
  EXPECT_EQ(access("carol", "Photos"), "denied");
}

// More than 12000 bytes; who comes last counts as much as who comes first.
TEST_F(Access, AFullAccessListWorksToItsLastEntry) {
  Appliance machine;
  std::string list = "#alice#";
  for (uid_t uid = 20000; list.size() < 12265; ++uid) {
    const std::string name = "user" + std::to_string(uid);
    machine.user(name, uid, 500);
    list += ",#" + name + "#";
  }
  list += ",#bob#";
  ASSERT_LT(list.size(), 12288U);
  serve(music().write(list));
  EXPECT_NE(shell("grep '^write list = ' /etc/samba/smb.conf").out.find("\"bob\""), std::string::npos);
  EXPECT_EQ(access("alice", "Music"), "write");
  EXPECT_EQ(access("bob", "Music"), "write");
  EXPECT_EQ(access("carol", "Music"), "denied");
}

TEST_F(Access, AWriteListThatIsTakenBackIsTakenBack) {
  serve(music().write("#alice#,#bob#"));
  EXPECT_EQ(access("bob", "Music"), "write");
  ASSERT_EQ(mod_share(music().write("#alice#").read("#bob#")), 1);
  EXPECT_EQ(access("bob", "Music"), "read");
}

} // namespace
} // namespace nasshare::tests
