// One section of smb.conf per share.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "share.h"
#include "smb_conf.h"
#include "text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

Share music() {
  return Share{"Music"}.comment("Songs").path("/mnt/HD/HD_a2/music").oplocks("yes").map_archive("no");
}

using Values = std::vector<std::string>;

// The value of the option in every section, in order.
Values values(const std::string &option) {
  const std::string label = option + " = ";
  Values found = lines_beginning(generated_sections(), label);
  for (std::string &line : found) {
    line.erase(0, label.size());
  }
  return found;
}

std::string quoted(std::string list) {
  std::ranges::replace(list, '#', '"');
  return list;
}

TEST(ShareSection, HasItsOptionsInThisOrder) {
  Insert_Smb_Node(music().read("#alice#").write("#@staff#").deny("#carol#").recycle(1, 1));
  EXPECT_EQ(generated_sections(), "[ Music ]\n"
                                  "comment = Songs\n"
                                  "path = /mnt/HD/HD_a2/music\n"
                                  "browseable = yes\n"
                                  "public = yes\n"
                                  "oplocks = yes\n"
                                  "map archive = no\n"
                                  "read list = \"alice\"\n"
                                  "write list = \"@staff\"\n"
                                  "invalid users = \"nobody\",\"carol\"\n"
                                  "valid users = \"alice\",\"@staff\"\n"
                                  "vfs object = recycle\n"
                                  "recycle:keeptree = yes\n"
                                  "recycle:versions = yes\n"
                                  "recycle:subdir_mode = 0700\n"
                                  "recycle:repository = ../recycle/%u\n");
}

TEST(ShareSection, WithoutARecycleBinEndsWithTheValidUsers) {
  Insert_Smb_Node(music().everyone());
  EXPECT_EQ(generated_sections(), "[ Music ]\n"
                                  "comment = Songs\n"
                                  "path = /mnt/HD/HD_a2/music\n"
                                  "browseable = yes\n"
                                  "public = yes\n"
                                  "oplocks = yes\n"
                                  "map archive = no\n"
                                  "read list = \n"
                                  "write list = \"nobody\",\"@allaccount\"\n"
                                  "invalid users = \n"
                                  "valid users = \"nobody\",\"@allaccount\"\n");
}

TEST(ShareSection, AnEmptyLineStandsBetweenTwoOnly) {
  for (const char *name : {"A", "B", "C"}) {
    Insert_Smb_Node(Share{name}.everyone());
  }
  const std::string rest = " ]\ncomment = \npath = \nbrowseable = yes\npublic = yes\noplocks = \n"
                           "map archive = \nread list = \nwrite list = \"nobody\",\"@allaccount\"\n"
                           "invalid users = \nvalid users = \"nobody\",\"@allaccount\"\n";
  EXPECT_EQ(generated_sections(), "[ A" + rest + "\n[ B" + rest + "\n[ C" + rest);
}

TEST(ShareSection, StoredWordsAreWrittenAsTheyAre) {
  Insert_Smb_Node(music().everyone());
  put(pss->head->browseable, "no");
  put(pss->head->public_, "maybe");
  EXPECT_EQ(values("browseable"), Values{"no"});
  EXPECT_EQ(values("public"), Values{"maybe"});
}

TEST(ShareSection, TextsAreNoFormats) {
  Insert_Smb_Node(Share{"%s & %n"}.comment("100%d").path("/mnt/HD/HD_a2/%s").everyone());
  EXPECT_EQ(generated_sections().substr(0, 52), "[ %s & %n ]\ncomment = 100%d\npath = /mnt/HD/HD_a2/%s\n");
}

TEST(ShareSection, FullFieldsAreWrittenWhole) {
  const std::string name(511, 'n');
  const std::string comment(511, 'c');
  const std::string path = "/" + std::string(4094, 'p');
  Insert_Smb_Node(Share{name}.comment(comment).path(path).everyone());
  EXPECT_TRUE(generated_sections().starts_with("[ " + name + " ]\ncomment = " + comment + "\npath = " + path +
                                               "\nbrowseable"));
}

// ---- Access lists

TEST(ShareSection, EachLineCarriesAFullAccessList) {
  const std::string full = full_list();
  ASSERT_EQ(full.size(), 12287U);
  Insert_Smb_Node(music().read(full).write(full).deny("#nobody#"));
  put(pss->head->invalid_users, full);
  EXPECT_EQ(values("read list"), Values{quoted(full)});
  EXPECT_EQ(values("write list"), Values{quoted(full)});
  EXPECT_EQ(values("invalid users"), Values{quoted(full)});
  EXPECT_EQ(values("valid users"), Values{quoted(full)});
}

TEST(ShareSection, TheListsOfTheRecordsAreConvertedInPlace) {
  Insert_Smb_Node(music().read("#alice#").write("#@staff#").deny("#carol#"));
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_STREQ(pss->head->read_list, "\"alice\"");
  EXPECT_STREQ(pss->head->write_list, "\"@staff\"");
  EXPECT_STREQ(pss->head->invalid_users, "\"nobody\",\"carol\"");
  EXPECT_STREQ(pss->head->valid_users, "\"alice\",\"@staff\"");
}

TEST(ShareSection, DomainListsHoldKnownAccountsOnly) {
  in_the_domain();
  Insert_Smb_Node(music().read("#alice#,#dave#").write("#@sales#").deny("#@staff#"));
  const std::string text = generated_sections();
  EXPECT_NE(text.find("\nread list = \"CORP+alice\"\n"
                      "write list = \n"
                      "invalid users = \"nobody\",\"+CORP+staff\"\n"
                      "valid users = \"CORP+alice\"\n"),
            std::string::npos)
      << text;
}

// ---- Oplocks

TEST(Oplocks, AreOffEverywhereWhileAfpIsOn) {
  Appliance{}.config("/system_mgr/afp/enable", "1");
  Insert_Smb_Node(music().everyone());
  Insert_Smb_Node(Share{"Docs"}.oplocks("no").everyone());
  EXPECT_EQ(values("oplocks"), (Values{"no", "no"}));
  EXPECT_STREQ(pss->head->oplocks, "yes") << "the record keeps its own";
}

TEST(Oplocks, AreOffOnExportedSharesWhileNfsIsOn) {
  Appliance{}
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_a2/music\" *(rw)\n/mnt/HD/HD_a2/docs *(rw)\n");
  Insert_Smb_Node(music().everyone());
  Insert_Smb_Node(Share{"Docs"}.path("/mnt/HD/HD_a2/docs").oplocks("yes").everyone());
  Insert_Smb_Node(Share{"Slash"}.path("/mnt/HD/HD_a2/music/").oplocks("yes").everyone());
  Insert_Smb_Node(Share{"Off"}.path("/mnt/HD/HD_a2/off").oplocks("no").everyone());
  EXPECT_EQ(values("oplocks"), (Values{"no", "yes", "yes", "no"}));
}

TEST(Oplocks, AreAsStoredWithoutAnotherFileService) {
  Appliance{}.exports("\"/mnt/HD/HD_a2/music\" *(rw)\n");
  Insert_Smb_Node(music().everyone());
  Insert_Smb_Node(Share{"Docs"}.oplocks("no").everyone());
  EXPECT_EQ(values("oplocks"), (Values{"yes", "no"}));
}

TEST(Oplocks, OnlyOneSwitchesAServiceOn) {
  Appliance{}
      .config("/system_mgr/afp/enable", "2")
      .config("/system_mgr/nfs/enable", "yes")
      .exports("\"/mnt/HD/HD_a2/music\" *(rw)\n");
  Insert_Smb_Node(music().everyone());
  EXPECT_EQ(values("oplocks"), Values{"yes"});
}

TEST(Oplocks, WithoutAnExportFileNothingIsExported) {
  Appliance{}.config("/system_mgr/nfs/enable", "1");
  Insert_Smb_Node(music().everyone());
  EXPECT_EQ(values("oplocks"), Values{"yes"});
}

TEST(Oplocks, TheComparisonOfPathsIsPrintedWhenTheDebugFlagIsOne) {
  Appliance{}.config("/system_mgr/nfs/enable", "1").exports("\"/mnt/HD/HD_a2/docs\" *(rw)\n");
  Insert_Smb_Node(music().everyone());
  expect_trace([] { create_smb_conf(); }, "afp nfs state is [0][1]\n"
                                          "get_nfs_path---->[/mnt/HD/HD_a2/docs]\n"
                                          "compare path---->[/mnt/HD/HD_a2/music]\n");
}

TEST(Oplocks, WithAfpOnTheExportsAreNotAsked) {
  Appliance{}
      .config("/system_mgr/afp/enable", "1")
      .config("/system_mgr/nfs/enable", "1")
      .exports("\"/mnt/HD/HD_a2/docs\" *(rw)\n");
  Insert_Smb_Node(music().everyone());
  expect_trace([] { create_smb_conf(); }, "afp nfs state is [1][1]\n");
}

// ---- Recycle options

TEST(RecycleOptions, TheTreeIsKeptOnlyWhenTheShareSaysSo) {
  for (const int tree : {0, 1, 2}) {
    Free_All_List();
    Insert_Smb_Node(music().everyone().recycle(1, tree));
    EXPECT_EQ(values("recycle:keeptree"), tree == 1 ? Values{"yes"} : Values{});
    EXPECT_EQ(values("recycle:versions"), Values{"yes"});
  }
}

TEST(RecycleOptions, OnlyOneSwitchesTheBinOn) {
  for (const int enable : {0, 2, -1}) {
    Free_All_List();
    Insert_Smb_Node(music().everyone().recycle(enable, 1));
    EXPECT_EQ(values("vfs object"), Values{});
    EXPECT_EQ(values("recycle:keeptree"), Values{});
  }
}

TEST(RecycleOptions, TheRepositoryLiesInTheRootOfTheVolume) {
  const struct {
    const char *path, *repository;
  } rows[] = {
      {"/mnt/HD/HD_a2", "./recycle/%u"},
      {"/mnt/HD/HD_a2/", "./recycle/%u"},
      {"/mnt/HD/HD_a2/music", "../recycle/%u"},
      {"/mnt/HD/HD_a2/doc/", "../recycle/%u"},
      {"/mnt/HD/HD_b2/a/b", "../../recycle/%u"},
      {"/mnt/HD/HD_b2/a/b/c/d/", "../../../../recycle/%u"},
      {"/mnt/HD", "/%u"},
      {"", "/%u"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.path);
    Free_All_List();
    Insert_Smb_Node(Share{"Music"}.path(row.path).everyone().recycle(1));
    EXPECT_EQ(values("recycle:repository"), Values{row.repository});
  }
}

TEST(RecycleOptions, TakeATrailingSlashOffTheStoredPathAfterItWasWritten) {
  Insert_Smb_Node(Share{"Doc"}.path("/mnt/HD/HD_a2/doc/").everyone().recycle(1));
  Insert_Smb_Node(Share{"Plain"}.path("/mnt/HD/HD_a2/plain/").everyone());
  EXPECT_EQ(values("path"), (Values{"/mnt/HD/HD_a2/doc/", "/mnt/HD/HD_a2/plain/"}));
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/doc");
  EXPECT_STREQ(pss->tail->path, "/mnt/HD/HD_a2/plain/");
}

TEST(RecycleOptions, OfAVeryDeepShareStayALine) {
  const std::string path = repeated("/a", 2047);
  Insert_Smb_Node(Share{"Deep"}.path(path).everyone().recycle(1));
  const Values repository = values("recycle:repository");
  ASSERT_EQ(repository.size(), 1U);
  EXPECT_LE(repository[0].size(), 4095U + 3U);
  EXPECT_EQ(repository[0].substr(0, 9), "../../../");
}

} // namespace
} // namespace nasshare::tests
