// The group file: how it is read and how the name list replaces it.
#include "appliance.h"
#include "dfs_files.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"
#include "output.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

// The name list that comes of a group file with this text, in place of one that held a name.
Names groups_of(const std::string &text) {
  Appliance{}.file(group_path, text);
  Free_Name_List();
  Insert_Name_Node("before");
  read_DFS_group_xml();
  return listed_names();
}

TEST(GroupStore, TheNameListIsWrittenAsItems) {
  Insert_Name_Node("media");
  Insert_Name_Node("office");
  write_DFS_group_xml();
  EXPECT_EQ(read_file(group_path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<config>\n"
                                   "  <dfs>\n"
                                   "    <item>\n"
                                   "      <group>media</group>\n"
                                   "    </item>\n"
                                   "    <item>\n"
                                   "      <group>office</group>\n"
                                   "    </item>\n"
                                   "  </dfs>\n"
                                   "</config>\n");
  EXPECT_EQ(listed_names(), (Names{"media", "office"}));
}

TEST(GroupStore, AnEmptyNameListIsAnEmptyElement) {
  Appliance{}.file(group_path, group_file({"media"}));
  write_DFS_group_xml();
  EXPECT_EQ(read_file(group_path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<config>\n"
                                   "  <dfs/>\n"
                                   "</config>\n");
}

TEST(GroupStore, AListedNameIsWrittenAsMarkup) {
  for (const char *name : {"R&amp;B", "&#38;", "R&B", "&lt;", "&nonesuch;", ""}) {
    Insert_Name_Node(name);
  }
  write_DFS_group_xml();
  EXPECT_EQ(read_file(group_path), group_file({"R&amp;B", "&amp;", "R&amp;B", "&lt;", "&amp;nonesuch;", ""}));
}

TEST(GroupStore, ReadingReplacesTheNameList) {
  EXPECT_EQ(groups_of(group_file({"media", "R&amp;B", "&amp;amp;"})), (Names{"media", "R&B", "&amp;"}));
  EXPECT_EQ(pnl->count, 3);
}

TEST(GroupStore, WithoutAFileTheNameListStays) {
  Insert_Name_Node("before");
  read_DFS_group_xml();
  EXPECT_EQ(listed_names(), Names{"before"});
}

TEST(GroupStore, AFileThatIsNoXmlEmptiesTheNameList) {
  for (const char *text : {"", "text", "<config><dfs><item><group>media</group></item>"}) {
    SCOPED_TRACE(text);
    Captured captured;
    EXPECT_EQ(groups_of(text), Names{});
    EXPECT_EQ(captured.out(), "");
    EXPECT_EQ(captured.err(), "");
  }
}

TEST(GroupStore, WithoutDfsOrItemThereAreNoGroups) {
  for (const char *text :
       {"<config/>", "<config><dfs/></config>", "<dfs><item><group>media</group></item></dfs>",
        "<config><dfs><entry><group>media</group></entry></dfs></config>"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(groups_of(text), Names{});
  }
}

TEST(GroupStore, FromTheFirstItemOnEveryElementIsAGroup) {
  EXPECT_EQ(groups_of("<any><dfs><before><group>one</group></before><item><group>two</group></item>"
                      "<!-- three --><entry><group>four</group></entry></dfs></any>"),
            (Names{"two", "four"}));
}

TEST(GroupStore, AnItemWithoutAGroupIsAnEmptyName) {
  EXPECT_EQ(groups_of("<config><dfs><item/><item><name>media</name></item>"
                      "<item><group>one</group><group>two</group></item></dfs></config>"),
            (Names{"", "", "one"}));
}

TEST(GroupStore, ALongerNameIsCut) {
  EXPECT_EQ(groups_of(group_file({std::string(600, 'g'), "media"})), (Names{std::string(511, 'g'), "media"}));
}

TEST(GroupStore, LoadingEmptiesTheNameListFirst) {
  Insert_Name_Node("before");
  get_dfs_group_info();
  EXPECT_EQ(listed_names(), Names{});
  Appliance{}.file(group_path, group_file({"media"}));
  Insert_Name_Node("before");
  get_dfs_group_info();
  EXPECT_EQ(listed_names(), Names{"media"});
}

} // namespace
} // namespace nasshare::tests
