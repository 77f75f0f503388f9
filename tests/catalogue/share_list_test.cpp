// The share list: what is listed, in which order, and by which rules a record is copied into it.
#include "access_lists.h"
#include "debug_output.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "share.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace nasshare::tests {
namespace {

void insert(const Names &names) {
  for (const std::string &name : names) {
    Insert_Smb_Node(Share{name});
  }
}

TEST(ShareList, IsEmptyAtStart) {
  EXPECT_EQ(pss, &smbshare);
  EXPECT_EQ(Is_Smb_Empty(), 1);
  EXPECT_EQ(pss->count, 0);
  EXPECT_EQ(pss->head, nullptr);
}

TEST(ShareList, AppendsInOrder) {
  insert({"Music", "Films", "Docs"});
  EXPECT_EQ(listed_shares(), (Names{"Music", "Films", "Docs"}));
  EXPECT_EQ(pss->count, 3);
  EXPECT_STREQ(pss->tail->name, "Docs");
  EXPECT_EQ(pss->tail->next, nullptr);
  EXPECT_EQ(Is_Smb_Empty(), 0);
}

TEST(ShareList, OwnsACopyOfTheRecord) {
  Share mine = Share{"Music"}.comment("before");
  smb_share *copy = Insert_Smb_Node(mine);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, &mine.record());
  EXPECT_EQ(copy, pss->head);
  mine.comment("after");
  EXPECT_STREQ(copy->comment, "before");
}

TEST(ShareList, CopiesEveryField) {
  const Share source = Share{"Music"}
                           .tag(4, "UUID=1:2:3:4")
                           .comment("All songs")
                           .path("/mnt/HD/HD_a2/music")
                           .oplocks("no")
                           .map_archive("yes")
                           .read("#bob#")
                           .write("#alice#,#@staff#")
                           .deny("#nobody#,#carol#")
                           .recycle(1, 1);
  const smb_share *copy = Insert_Smb_Node(source);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->volume_raid, 4);
  EXPECT_STREQ(copy->hd_serial, "UUID=1:2:3:4");
  EXPECT_STREQ(copy->name, "Music");
  EXPECT_STREQ(copy->comment, "All songs");
  EXPECT_STREQ(copy->path, "/mnt/HD/HD_a2/music");
  EXPECT_STREQ(copy->oplocks, "no");
  EXPECT_STREQ(copy->map_archive, "yes");
  EXPECT_STREQ(copy->read_list, "#bob#");
  EXPECT_STREQ(copy->write_list, "#alice#,#@staff#");
  EXPECT_STREQ(copy->invalid_users, "#nobody#,#carol#");
  EXPECT_EQ(copy->recycle_enable, 1);
  EXPECT_EQ(copy->recycle_tree, 1);
}

TEST(ShareList, LooksNamesUpExactly) {
  insert({"Music", "music", "Docs"});
  EXPECT_EQ(check_smb_share_name("Music"), pss->head);
  EXPECT_EQ(check_smb_share_name("music"), pss->head->next);
  EXPECT_EQ(check_smb_share_name("Docs"), pss->tail);
  for (const char *absent : {"MUSIC", "Mus", "Music ", " Music", ""}) {
    SCOPED_TRACE(absent);
    EXPECT_EQ(check_smb_share_name(absent), nullptr);
  }
  EXPECT_EQ(check_smb_share_name(nullptr), nullptr);
}

TEST(ShareList, LookupInAnEmptyListFindsNothing) {
  EXPECT_EQ(check_smb_share_name("Music"), nullptr);
  EXPECT_EQ(check_smb_share_name(""), nullptr);
}

TEST(ShareList, LookupAfterTheLastShareWentFindsNothing) {
  insert({"Music"});
  Remove_Smb_Node_By_Name("Music");
  EXPECT_EQ(check_smb_share_name("Music"), nullptr);
}

TEST(ShareList, NamesThatDifferInLetterCaseAreTwoShares) {
  insert({"Music", "MUSIC"});
  EXPECT_EQ(listed_shares(), (Names{"Music", "MUSIC"}));
}

TEST(ShareList, InsertingAListedNameChangesNothing) {
  insert({"Music", "Docs"});
  smb_share *first = Insert_Smb_Node(Share{"Music"}.comment("another").path("/mnt/HD/HD_b2/x").recycle(1));
  EXPECT_EQ(first, pss->head);
  EXPECT_EQ(listed_shares(), (Names{"Music", "Docs"}));
  EXPECT_STREQ(first->comment, "");
  EXPECT_STREQ(first->path, "");
  EXPECT_EQ(first->recycle_enable, 0);
}

TEST(ShareList, ARecordWithoutANameIsNotInserted) {
  insert({"Music"});
  EXPECT_EQ(Insert_Smb_Node(Share{""}.comment("nameless")), nullptr);
  EXPECT_EQ(Insert_Smb_Node(nullptr), nullptr);
  EXPECT_EQ(listed_shares(), Names{"Music"});
  EXPECT_EQ(pss->count, 1);
}

TEST(ShareList, EveryShareIsBrowseableAndPublic) {
  const Share hidden = Share{"Music"}.browseable("no").public_("no");
  smb_share *copy = Insert_Smb_Node(hidden);
  EXPECT_STREQ(copy->browseable, "yes");
  EXPECT_STREQ(copy->public_, "yes");

  put(copy->browseable, "no");
  put(copy->public_, "no");
  Modify_Smb_Node(hidden);
  EXPECT_STREQ(copy->browseable, "yes");
  EXPECT_STREQ(copy->public_, "yes");

  const Share other{"Other"};
  Dup_Smb_Struct(other, hidden);
  EXPECT_STREQ(other.record().browseable, "yes");
  EXPECT_STREQ(other.record().public_, "yes");
  EXPECT_STREQ(hidden.record().browseable, "no") << "the source stays as it is";
}

TEST(ShareList, AShareWithoutListsIsOpenToEveryone) {
  const smb_share *copy = Insert_Smb_Node(Share{"Music"});
  EXPECT_STREQ(copy->read_list, "");
  EXPECT_STREQ(copy->write_list, everyone);
  EXPECT_STREQ(copy->invalid_users, "");
  EXPECT_STREQ(copy->valid_users, everyone);
}

TEST(ShareList, DerivesTheValidUsersAnew) {
  const Share share = Share{"Music"}.read("#alice#").write("#bob#").valid("#stale#");
  const smb_share *copy = Insert_Smb_Node(share);
  EXPECT_STREQ(copy->valid_users, "#alice#,#bob#");
  EXPECT_STREQ(copy->invalid_users, "#nobody#");

  const Share target{"Copy"};
  Dup_Smb_Struct(target, share);
  EXPECT_STREQ(target.record().valid_users, "#alice#,#bob#");
  EXPECT_STREQ(target.record().invalid_users, "#nobody#");
}

TEST(ShareList, ModifyingOverwritesInPlace) {
  insert({"Music", "Films", "Docs"});
  smb_share *films = pss->head->next;
  EXPECT_EQ(Modify_Smb_Node(Share{"Films"}
                                .on_disk("WD-2")
                                .comment("new")
                                .path("/mnt/HD/HD_b2/films")
                                .oplocks("yes")
                                .write("#alice#")
                                .recycle(1, 1)),
            films);
  EXPECT_EQ(listed_shares(), (Names{"Music", "Films", "Docs"}));
  EXPECT_EQ(pss->head->next, films);
  EXPECT_EQ(pss->count, 3);
  EXPECT_EQ(films->volume_raid, 1);
  EXPECT_STREQ(films->hd_serial, "WD-2");
  EXPECT_STREQ(films->comment, "new");
  EXPECT_STREQ(films->path, "/mnt/HD/HD_b2/films");
  EXPECT_STREQ(films->oplocks, "yes");
  EXPECT_STREQ(films->write_list, "#alice#");
  EXPECT_STREQ(films->invalid_users, "#nobody#");
  EXPECT_STREQ(films->valid_users, "#alice#");
  EXPECT_EQ(films->recycle_enable, 1);
  EXPECT_EQ(films->recycle_tree, 1);
  EXPECT_STREQ(pss->head->comment, "");
  EXPECT_STREQ(pss->tail->comment, "");
}

TEST(ShareList, ModifyingAShareWithItselfKeepsIt) {
  smb_share *music = Insert_Smb_Node(Share{"Music"}.comment("songs").write("#alice#").recycle(1));
  EXPECT_EQ(Modify_Smb_Node(music), music);
  EXPECT_STREQ(music->name, "Music");
  EXPECT_STREQ(music->comment, "songs");
  EXPECT_STREQ(music->valid_users, "#alice#");
  EXPECT_EQ(music->recycle_enable, 1);
}

TEST(ShareList, ModifyingAnUnlistedNameChangesNothing) {
  insert({"Music"});
  EXPECT_EQ(Modify_Smb_Node(Share{"music"}.comment("new")), nullptr);
  EXPECT_EQ(Modify_Smb_Node(Share{""}.comment("new")), nullptr);
  EXPECT_EQ(Modify_Smb_Node(nullptr), nullptr);
  EXPECT_EQ(listed_shares(), Names{"Music"});
  EXPECT_STREQ(pss->head->comment, "");
}

TEST(ShareList, CopyingKeepsTheLinkOfTheDestination) {
  insert({"Music", "Docs"});
  const smb_share *docs = pss->tail;
  Dup_Smb_Struct(pss->head, Share{"Films"}.comment("copied"));
  EXPECT_EQ(listed_shares(), (Names{"Films", "Docs"}));
  EXPECT_EQ(pss->head->next, docs);
  EXPECT_STREQ(pss->head->comment, "copied");
}

TEST(ShareList, CopyingWithoutSourceOrDestinationDoesNothing) {
  const Share music = Share{"Music"}.comment("songs");
  Dup_Smb_Struct(nullptr, music);
  Dup_Smb_Struct(music, nullptr);
  EXPECT_STREQ(music.record().name, "Music");
  EXPECT_STREQ(music.record().comment, "songs");
  EXPECT_STREQ(music.record().write_list, "");
}

TEST(ShareList, RemovingRelinksTheRest) {
  const struct {
    const char *removed;
    Names rest;
  } rows[] = {
      {"Music", {"Films", "Docs"}},
      {"Films", {"Music", "Docs"}},
      {"Docs", {"Music", "Films"}},
  };
  const std::pair<const char *, std::function<void(const char *)>> ways[] = {
      {"by name", Remove_Smb_Node_By_Name},
      {"by identity", [](const char *name) { Remove_Smb_Node(check_smb_share_name(name)); }},
  };
  for (const auto &[way, remove] : ways) {
    for (const auto &row : rows) {
      SCOPED_TRACE(std::string(row.removed) + " " + way);
      Free_All_List();
      insert({"Music", "Films", "Docs"});
      remove(row.removed);
      EXPECT_EQ(listed_shares(), row.rest);
      EXPECT_EQ(pss->count, 2);
      EXPECT_EQ(pss->tail->name, row.rest.back());
      EXPECT_EQ(pss->tail->next, nullptr);
      insert({"New"});
      EXPECT_EQ(listed_shares(), (Names{row.rest[0], row.rest[1], "New"}));
    }
  }
}

TEST(ShareList, RemovingTheOnlyShareLeavesTheTailBehind) {
  const std::pair<const char *, std::function<void()>> ways[] = {
      {"by name", [] { Remove_Smb_Node_By_Name("Music"); }},
      {"by identity", [] { Remove_Smb_Node(pss->head); }},
  };
  for (const auto &[way, remove] : ways) {
    SCOPED_TRACE(way);
    const auto freed = reinterpret_cast<std::uintptr_t>(Insert_Smb_Node(Share{"Music"}));
    remove();
    EXPECT_EQ(pss->count, 0);
    EXPECT_EQ(pss->head, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pss->tail), freed);
    EXPECT_EQ(Is_Smb_Empty(), 1);

    const smb_share *docs = Insert_Smb_Node(Share{"Docs"});
    EXPECT_EQ(listed_shares(), Names{"Docs"});
    EXPECT_EQ(pss->head, docs);
    EXPECT_EQ(pss->tail, docs);
    Free_All_List();
  }
}

TEST(ShareList, RemovingWhatIsNotListedDoesNothing) {
  Remove_Smb_Node_By_Name("Music");
  Remove_Smb_Node(Share{"Music"});
  insert({"Music"});
  Remove_Smb_Node_By_Name("music");
  Remove_Smb_Node_By_Name("");
  Remove_Smb_Node_By_Name(nullptr);
  Remove_Smb_Node(nullptr);
  Remove_Smb_Node(Share{"Music"});
  EXPECT_EQ(listed_shares(), Names{"Music"});
  insert({"Docs"});
  Remove_Smb_Node(Share{"Docs"});
  EXPECT_EQ(listed_shares(), (Names{"Music", "Docs"}));
}

TEST(ShareList, FreeingLeavesItEmpty) {
  for (const Names &names : {Names{}, Names{"Music"}, Names{"Music", "Films", "Docs"}}) {
    SCOPED_TRACE(names.size());
    insert(names);
    Free_All_List();
    EXPECT_EQ(Is_Smb_Empty(), 1);
    EXPECT_EQ(pss->count, 0);
    EXPECT_EQ(pss->head, nullptr);
    EXPECT_EQ(pss->tail, nullptr);
  }
  Free_All_List();
  EXPECT_EQ(pss->count, 0);
}

TEST(ShareListing, IsPrintedForAnyFlagButZero) {
  Insert_Smb_Node(Share{"Music"}
                      .tag(4, "UUID=1:2:3:4")
                      .comment("All songs")
                      .path("/mnt/HD/HD_a2/music")
                      .oplocks("yes")
                      .map_archive("no")
                      .read("#bob#")
                      .write("#alice#")
                      .deny("#carol#")
                      .recycle(1, 1));
  Insert_Smb_Node(Share{"Docs 100%s"});
  const std::string expected = "\n"
                               "volume_raid     : [4]\n"
                               "hd_serial       : [UUID=1:2:3:4]\n"
                               "name            : [Music]\n"
                               "comment         : [All songs]\n"
                               "path            : [/mnt/HD/HD_a2/music]\n"
                               "browseable      : [yes]\n"
                               "public          : [yes]\n"
                               "oplocks         : [yes]\n"
                               "map_archive     : [no]\n"
                               "read_list       : [#bob#]\n"
                               "write_list      : [#alice#]\n"
                               "invalid_users   : [#nobody#,#carol#]\n"
                               "valid_users     : [#bob#,#alice#]\n"
                               "recycle_enable  : [1]\n"
                               "recycle_tree    : [1]\n\n"
                               "volume_raid     : [0]\n"
                               "hd_serial       : []\n"
                               "name            : [Docs 100%s]\n"
                               "comment         : []\n"
                               "path            : []\n"
                               "browseable      : [yes]\n"
                               "public          : [yes]\n"
                               "oplocks         : []\n"
                               "map_archive     : []\n"
                               "read_list       : []\n"
                               "write_list      : [#nobody#,#@allaccount#]\n"
                               "invalid_users   : []\n"
                               "valid_users     : [#nobody#,#@allaccount#]\n"
                               "recycle_enable  : [0]\n"
                               "recycle_tree    : [0]\n\n";
  expect_listing(List_Smb_Node, expected);
  EXPECT_EQ(share_listing({Share(*pss->head), Share(*pss->tail)}), expected) << "as other tests spell it";
}

TEST(ShareListing, OfAnEmptyListIsOneNewline) {
  Insert_Smb_Node(Share{"Music"});
  Remove_Smb_Node_By_Name("Music");
  expect_listing(List_Smb_Node, "\n");
}

TEST(ShareList, ListOperationsPrintNothing) {
  expect_silence([] {
    insert({"Music", "Docs", "Music", ""});
    Modify_Smb_Node(Share{"Docs"});
    Remove_Smb_Node_By_Name("Films");
    Remove_Smb_Node_By_Name("Music");
    Remove_Smb_Node(pss->head);
    Free_All_List();
  });
}

TEST(ShareList, FullFieldsAreCopiedWhole) {
  const std::string name(511, 'n');
  const std::string comment(511, 'c');
  const std::string path(4095, 'p');
  const std::string serial(511, 's');
  const std::string readers = "#" + std::string(12285, 'r') + "#";
  const std::string denied = "#nobody#,#" + std::string(12276, 'd') + "#";
  const smb_share *copy = Insert_Smb_Node(Share{name}
                                              .comment(comment)
                                              .path(path)
                                              .tag(1, serial)
                                              .oplocks("1234567")
                                              .map_archive("7654321")
                                              .read(readers)
                                              .deny(denied)
                                              .recycle(1, 1));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->hd_serial, serial);
  EXPECT_EQ(copy->name, name);
  EXPECT_EQ(copy->comment, comment);
  EXPECT_EQ(copy->path, path);
  EXPECT_STREQ(copy->browseable, "yes");
  EXPECT_STREQ(copy->public_, "yes");
  EXPECT_STREQ(copy->oplocks, "1234567");
  EXPECT_STREQ(copy->map_archive, "7654321");
  EXPECT_EQ(copy->read_list, readers);
  EXPECT_STREQ(copy->write_list, "");
  EXPECT_EQ(copy->invalid_users, denied);
  EXPECT_EQ(copy->valid_users, readers);
  EXPECT_EQ(copy->recycle_enable, 1);
  EXPECT_EQ(copy->recycle_tree, 1);
  EXPECT_EQ(check_smb_share_name(name.c_str()), copy);
}

TEST(ShareList, FieldsWithoutATerminatorDoNotRunIntoTheirNeighbours) {
  const Share wild{"Wild"};
  smb_share &record = wild.record();
  overfill(record.hd_serial, 's');
  overfill(record.comment, 'c');
  overfill(record.path, 'p');
  overfill(record.browseable, 'b');
  overfill(record.public_, 'u');
  overfill(record.oplocks, 'o');
  overfill(record.map_archive, 'm');
  overfill(record.read_list, 'r');
  overfill(record.write_list, 'w');
  overfill(record.invalid_users, 'i');
  overfill(record.valid_users, 'v');
  const smb_share *copy = Insert_Smb_Node(wild);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->hd_serial, std::string(511, 's'));
  EXPECT_STREQ(copy->name, "Wild");
  EXPECT_EQ(copy->comment, std::string(511, 'c'));
  EXPECT_EQ(copy->path, std::string(4095, 'p'));
  EXPECT_STREQ(copy->browseable, "yes");
  EXPECT_STREQ(copy->public_, "yes");
  EXPECT_EQ(copy->oplocks, std::string(7, 'o'));
  EXPECT_EQ(copy->map_archive, std::string(7, 'm'));
  EXPECT_EQ(copy->read_list, std::string(12287, 'r'));
  EXPECT_EQ(copy->write_list, std::string(12287, 'w'));
  EXPECT_EQ(copy->recycle_enable, 0);
}

TEST(ShareList, ANameWithoutATerminatorIsListedOnce) {
  const Share wild{"x"};
  overfill(wild.record().name, 'n');
  const smb_share *first = Insert_Smb_Node(wild);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->name, std::string(511, 'n'));
  EXPECT_STREQ(first->comment, "");
  EXPECT_EQ(Insert_Smb_Node(wild), first);
  EXPECT_EQ(Modify_Smb_Node(wild), first);
  EXPECT_EQ(pss->count, 1);
}

} // namespace
} // namespace nasshare::tests
