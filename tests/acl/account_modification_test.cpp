// acnt_mod_share: one account's permissions carried into the stored shares.
#include "appliance.h"
#include "fields.h"
#include "nasshare/acl.h"
#include "output.h"
#include "paths.h"
#include "permission_codes.h"
#include "share.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

// What sync finds: the temporary file, the service command's call.
std::string found_by_sync;

void look_around_at_sync() {
  found_by_sync = std::string(exists(temporary_share_file) ? "temporary file\n" : "") + transcript();
  if (exists(first_share_file)) {
    found_by_sync += read_file(first_share_file);
  }
}

// Music is read by alice and bob, Films are for everyone, Photos only for alice.
std::vector<Share> stored_shares() {
  return {stored_share("Music").read("#alice#,#bob#").deny("#nobody#"), stored_share("Films").everyone(),
          stored_share("Photos").write("#alice#").deny("#nobody#")};
}

Appliance three_shares() {
  return Appliance::single_disks().shares(share_xml(stored_shares()));
}

TEST(AccountModification, IsStoredOnEveryVolume) {
  three_shares();
  insert_acnt_node("Music", to_write);
  insert_acnt_node("Films", to_deny);
  insert_acnt_node("Photos", no_list);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  const std::vector<Share> after{stored_share("Music").read("#bob#").write("#alice#").deny("#nobody#"),
                                 stored_share("Films").write("#bob#,#carol#").deny("#alice#")};
  expect_on_both_volumes(share_xml(after));
  EXPECT_FALSE(exists(temporary_share_file));
  EXPECT_EQ(transcript(), "smbcom\n");
  EXPECT_EQ(found_by_sync, share_xml(after)) << "before the service is told";
}

TEST(AccountModification, EmptiesBothLists) {
  three_shares();
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  EXPECT_EQ(is_acnt_empty(), 1);
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AccountModification, TakesItsSharesFromAnAccessControlRecord) {
  three_shares();
  const auto record = std::make_unique<smb_ac_node>();
  put(record->read, "Photos:Unknown");
  put(record->write, "Music");
  put(record->deny, ":Films:P2P");
  ac_put_acnt(record.get());
  EXPECT_EQ(acnt_mod_share("carol"), 1);
  expect_on_both_volumes(
      share_xml({stored_share("Music").read("#alice#,#bob#").write("#carol#").deny("#nobody#"),
                 stored_share("Films").write("#alice#,#bob#").deny("#carol#"),
                 stored_share("Photos").read("#carol#").write("#alice#").deny("#nobody#")}));
}

TEST(AccountModification, IsStoredEvenWhereNothingIsChanged) {
  three_shares().remove(second_share_file);
  insert_acnt_node("Unknown", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  expect_on_both_volumes(share_xml(stored_shares()));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(AccountModification, WithoutAnAccountOrAListNothingIsLoaded) {
  three_shares();
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share(""), 0);
  EXPECT_EQ(acnt_mod_share(nullptr), 0);
  EXPECT_EQ(pal->count, 1) << "the list stays";
  expect_on_both_volumes(share_xml(stored_shares()));
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(kernel_requests(), "");
}

// Such a name would come back as another one, or as two.
TEST(AccountModification, AnAccountThatNoListCanHoldChangesNothing) {
  three_shares();
  const std::string long_name(512, 'a');
  for (const char *account :
       {"a#,#eve", "a,b", "m\xFCller", "a\x01", "a\nb", "a\rb", "a&lt;b", "a&#38;b", long_name.c_str()}) {
    SCOPED_TRACE(testing::PrintToString(account));
    insert_acnt_node("Music", to_write);
    EXPECT_EQ(acnt_mod_share(account), 0);
    EXPECT_EQ(is_acnt_empty(), 1) << "the next account takes nothing over";
  }
  expect_on_both_volumes(share_xml(stored_shares()));
  EXPECT_EQ(transcript(), "");
}

TEST(AccountModification, DoesNotPassAnAccountsPermissionsOnToTheNext) {
  three_shares();
  insert_acnt_node("Photos", to_write);
  EXPECT_EQ(acnt_mod_share("alice,eve"), 0);
  EXPECT_EQ(acnt_mod_share("bob"), 0);
  expect_on_both_volumes(share_xml(stored_shares()));
}

// An account with an ampersand that begins no reference is one like any other.
TEST(AccountModification, AnAmpersandComesBackAsItWas) {
  three_shares().user("r&d", 2001, 100);
  insert_acnt_node("Photos", to_read);
  EXPECT_EQ(acnt_mod_share("r&d"), 1);
  get_samba_info();
  EXPECT_STREQ(pss->tail->read_list, "#r&d#");
}

// ---- Lists without room

constexpr std::size_t list_width = sizeof smb_share::invalid_users;

// "#alice#,#alice#,..." of the largest length at which no further entry fits.
std::string list_filled_with(const std::string &name) {
  std::string list = "#" + name + "#";
  while (list.size() + name.size() + 3 < list_width) {
    list += ",#" + name + "#";
  }
  return list;
}

TEST(FullList, OfThoseWhoAreDeniedRefusesOneMore) {
  const auto shares = {
      stored_share("Music").write("#bob#").deny("#nobody#," + list_filled_with("carol").substr(9))};
  three_shares().shares(share_xml(shares));
  insert_acnt_node("Music", to_deny);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  expect_on_both_volumes(share_xml(shares));
  EXPECT_EQ(transcript(), "");
}

// The next load puts the guest in front of those who are denied: whoever dropped out for it would be let in.
TEST(FullList, OfThoseWhoAreDeniedKeepsRoomForTheGuest) {
  three_shares().shares(share_xml({stored_share("Music").write("#alice#").deny("#nobody#,#@allaccount#")}));
  std::string passwd = read_file("/etc/passwd");
  std::size_t length = std::string("#bob#,#carol#").size();
  int uid = 3000;
  while (length < list_width - 1 - 5) { // four bytes are left, and the guest takes nine
    const std::size_t rest = list_width - 1 - 5 - length;
    const std::size_t size = rest > 60 ? 28 : rest - 3;
    const std::string name = std::to_string(uid) + std::string(size - 4, 'x');
    passwd += name + ":x:" + std::to_string(uid++) + ":100::/:/bin/false\n";
    length += size + 3;
  }
  Appliance{}.file("/etc/passwd", passwd);
  const std::string before = read_file(first_share_file);
  insert_acnt_node("Music", to_read);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  expect_on_both_volumes(before);
}

TEST(FullList, OfReadersRefusesOneMore) {
  const auto shares = {stored_share("Music").read(list_filled_with("carol")).deny("#nobody#")};
  three_shares().shares(share_xml(shares));
  insert_acnt_node("Music", to_read);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  expect_on_both_volumes(share_xml(shares));
}

std::string hundreds_of_accounts() {
  std::string passwd;
  for (int i = 0; i < 300; ++i) {
    passwd += "account-with-a-name-of-some-length-" + std::to_string(1000 + i) +
              ":x:" + std::to_string(3000 + i) + ":100::/:/bin/false\n";
  }
  return passwd;
}

void add_hundreds_of_accounts() {
  Appliance{}.file("/etc/passwd", read_file("/etc/passwd") + hundreds_of_accounts());
}

TEST(FullList, OfEveryoneElseWhoIsDeniedIsRefused) {
  three_shares()
      .folder("/mnt/HD/HD_a2/New")
      .shares(share_xml({stored_share("Music").deny("#nobody#,#@allaccount#").write("#alice#")}));
  add_hundreds_of_accounts();
  const std::string before = read_file(first_share_file);
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("bob"), 0);
  EXPECT_EQ(add_share(Share{"New"}
                          .path("/mnt/HD/HD_a2/New")
                          .write("#alice#")
                          .deny("#nobody#,#@allaccount#")
                          .oplocks("yes")
                          .map_archive("no")),
            0);
  expect_on_both_volumes(before);
}

TEST(FullList, OfEveryoneElseWhoMayWriteLetsFewerIn) {
  three_shares();
  add_hundreds_of_accounts();
  insert_acnt_node("Films", to_read);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
}

// In a list it would be two other accounts.
TEST(UnlistableAccount, IsLeftOutOfThoseWhoMayEnter) {
  three_shares().user("a,b", 2001, 100).user("c#d", 2002, 100).user("e&lt;f", 2003, 100);
  insert_acnt_node("Films", to_read);
  EXPECT_EQ(acnt_mod_share("alice"), 1);
  get_samba_info();
  EXPECT_STREQ(check_smb_share_name("Films")->write_list, "#bob#,#carol#");
}

// "@odd" would be the group of that name.
class UnlistableAccountName : public testing::TestWithParam<const char *> {};

TEST_P(UnlistableAccountName, KeepsEveryoneElseFromBeingDenied) {
  three_shares()
      .user(GetParam(), 2001, 100)
      .shares(share_xml({stored_share("Music").deny("#nobody#,#@allaccount#").write("#alice#")}));
  const std::string before = read_file(first_share_file);
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("bob"), 0);
  expect_on_both_volumes(before);
}

INSTANTIATE_TEST_SUITE_P(Names, UnlistableAccountName, testing::Values("a,b", "@odd"));

TEST(AccountModification, OfAnAutomaticShareAloneIsNone) {
  three_shares();
  for (const char *name : {"P2P", "aMule", "USBDisk1_1"}) {
    insert_acnt_node(name, to_write);
  }
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  EXPECT_EQ(transcript(), "");
}

TEST(AccountModification, InADomainTheDomainsFilesAreChanged) {
  const std::vector<Share> before{
      stored_share("Music").read("#CORP alice#,#@domain admins#").deny("#nobody#"),
      stored_share("Films").everyone()};
  three_shares().config("/system_mgr/samba/ads_enable", "1").ads_shares(share_xml(before));
  insert_acnt_node("Music", to_write);
  insert_acnt_node("Films", to_deny);
  EXPECT_EQ(acnt_mod_share("CORP alice"), 1);
  const std::string after =
      share_xml({stored_share("Music").read("#@domain admins#").write("#CORP alice#").deny("#nobody#"),
                 stored_share("Films").deny("#CORP alice#")});
  EXPECT_EQ(read_file(first_domain_file), after);
  EXPECT_EQ(read_file(second_domain_file), after);
  expect_on_both_volumes(share_xml(stored_shares()));
}

TEST(AccountModification, LeavesTheVolumesWhenTheTemporaryFileCannotBeWritten) {
  three_shares().read_only("/tmp");
  insert_acnt_node("Music", to_write);
  EXPECT_EQ(acnt_mod_share("alice"), 0);
  expect_on_both_volumes(share_xml(stored_shares()));
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AccountModification, WithoutAVolumeTheProcessEnds) {
  Appliance{}.disk("sda", "scsi0", "WD-1");
  insert_acnt_node("Music", to_write);
  const Ended ended = run_to_exit([] { acnt_mod_share("alice"); });
  EXPECT_FALSE(ended.returned);
  EXPECT_EQ(ended.status, 255);
}

} // namespace
} // namespace nasshare::tests

// Wins over the C library's.
extern "C" [[gnu::visibility("default")]] void sync() noexcept {
  nasshare::tests::look_around_at_sync();
  syscall(SYS_sync);
}
