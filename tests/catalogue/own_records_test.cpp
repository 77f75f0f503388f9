// A host program loads the list, picks a share and hands its own record or name back: the operations load,
// and so empty, the list first.
#include "appliance.h"
#include "fields.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

void load_music_and_films() {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/mnt/HD/HD_a2/Films")
      .shares("/mnt/HD_a4",
              share_xml({stored_share("Music").write("#alice#"), stored_share("Films").write("#bob#")}));
  get_samba_info();
  ASSERT_EQ(pss->count, 2);
}

std::string stored_text() {
  return read_file(first_share_file);
}

TEST(AListedSharesOwnName, IsTaken) {
  load_music_and_films();
  EXPECT_EQ(chk_share(pss->head->name), 0);
}

TEST(AListedSharesOwnName, IsTakenWithItsOwnPath) {
  load_music_and_films();
  EXPECT_EQ(chk_name_path(pss->head->name, pss->head->path), 2);
}

TEST(AListedSharesOwnName, DeletesIt) {
  load_music_and_films();
  EXPECT_EQ(del_share(pss->head->name), 1);
  EXPECT_EQ(chk_share("Music"), 1);
  EXPECT_EQ(chk_share("Films"), 0);
}

TEST(AListedSharesOwnName, IsThatOfAnAccount) {
  Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/alice")
      .shares("/mnt/HD_a4", share_xml({stored_share("alice").write("#bob#")}));
  get_samba_info();
  ASSERT_EQ(pss->count, 1);
  insert_acnt_node("alice", 2);
  EXPECT_EQ(acnt_mod_share(pss->head->name), 1);
  EXPECT_NE(stored_text().find("<write_list>#bob#,#alice#</write_list>"), std::string::npos) << stored_text();
}

TEST(AListedRecord, CanBeChanged) {
  load_music_and_films();
  put(pss->head->comment, "changed");
  EXPECT_EQ(mod_share(pss->head), 1);
  EXPECT_NE(stored_text().find("<comment>changed</comment>"), std::string::npos);
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AListedRecord, OfTheEndOfTheListCanBeChanged) {
  load_music_and_films();
  put(pss->tail->comment, "changed");
  EXPECT_EQ(mod_share(pss->tail), 1);
  EXPECT_NE(stored_text().find("<comment>changed</comment>"), std::string::npos);
}

TEST(AListedRecord, CanBeAddedUnderAnotherName) {
  load_music_and_films();
  put(pss->head->name, "Sounds");
  EXPECT_EQ(add_share(pss->head), 1);
  EXPECT_EQ(chk_share("Sounds"), 0);
  EXPECT_EQ(chk_share("Music"), 0);
}

TEST(AListedRecord, ThatIsRefusedForItsNameIsGoneWithTheList) {
  load_music_and_films();
  EXPECT_EQ(add_share(pss->head), 0);
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

} // namespace
} // namespace nasshare::tests
