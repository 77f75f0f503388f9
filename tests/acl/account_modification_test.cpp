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
  insert_acnt_node("Music", to_write);
  const std::string long_name(512, 'a');
  for (const char *account : {"a#,#eve", "a,b", "m\xFCller", "a\x01", long_name.c_str()}) {
    SCOPED_TRACE(testing::PrintToString(account));
    EXPECT_EQ(acnt_mod_share(account), 0);
    EXPECT_EQ(pal->count, 1) << "the list stays";
  }
  expect_on_both_volumes(share_xml(stored_shares()));
  EXPECT_EQ(transcript(), "");
}

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
