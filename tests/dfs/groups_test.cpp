// The groups: their file, the operations on them, and what these do to the links.
#include "appliance.h"
#include "dfs_files.h"
#include "nasshare/acl.h"
#include "nasshare/support.h"
#include "output.h"

#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

using Names = std::vector<std::string>;

const Link tunes{"srv1", "music", "tunes", "media"};
const Link films{"srv2", "movies", "films", "media"};
const Link papers{"srv3", "docs", "papers", "office"};

void stored(const Names &groups, const std::vector<Link> &links) {
  Appliance{}.file(group_path, group_file(groups)).file(link_path, link_file(links));
}

Names listed_names() {
  Names names;
  const smb_name_node *node = pnl->count == 0 ? nullptr : pnl->head;
  for (; node != nullptr; node = node->next) {
    names.emplace_back(node->name);
  }
  return names;
}

// The name list that comes of a group file with this text, in place of one that held a name.
Names read_from(const std::string &text) {
  Appliance{}.file(group_path, text);
  Free_Name_List();
  Insert_Name_Node("before");
  read_DFS_group_xml();
  return listed_names();
}

ino_t inode(const char *path) {
  struct stat status {};
  EXPECT_EQ(stat(path, &status), 0);
  return status.st_ino;
}

// The operation leaves the very files that stood there.
template <class Operation> void expect_files_untouched(Operation operation) {
  const ino_t groups = inode(group_path);
  const ino_t links = inode(link_path);
  operation();
  EXPECT_EQ(inode(group_path), groups);
  EXPECT_EQ(inode(link_path), links);
}

void bind_socket(const char *path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
  const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(file, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
  close(file);
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
  EXPECT_EQ(read_from(group_file({"media", "R&amp;B", "&amp;amp;"})), (Names{"media", "R&B", "&amp;"}));
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
    EXPECT_EQ(read_from(text), Names{});
    EXPECT_EQ(captured.out(), "");
    EXPECT_EQ(captured.err(), "");
  }
}

TEST(GroupStore, WithoutDfsOrItemThereAreNoGroups) {
  for (const char *text :
       {"<config/>", "<config><dfs/></config>", "<dfs><item><group>media</group></item></dfs>",
        "<config><dfs><entry><group>media</group></entry></dfs></config>"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(read_from(text), Names{});
  }
}

TEST(GroupStore, FromTheFirstItemOnEveryElementIsAGroup) {
  EXPECT_EQ(read_from("<any><dfs><before><group>one</group></before><item><group>two</group></item>"
                      "<!-- three --><entry><group>four</group></entry></dfs></any>"),
            (Names{"two", "four"}));
}

TEST(GroupStore, AnItemWithoutAGroupIsAnEmptyName) {
  EXPECT_EQ(read_from("<config><dfs><item/><item><name>media</name></item>"
                      "<item><group>one</group><group>two</group></item></dfs></config>"),
            (Names{"", "", "one"}));
}

TEST(GroupStore, ALongerNameIsCut) {
  EXPECT_EQ(read_from(group_file({std::string(600, 'g'), "media"})), (Names{std::string(511, 'g'), "media"}));
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

TEST(Groups, AGroupIsAddedOnce) {
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(add_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
}

TEST(Groups, AddedGroupsFollowInOrder) {
  EXPECT_EQ(add_dfs_group_node("office"), 1U);
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(add_dfs_group_node("Media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office", "media", "Media"}));
  EXPECT_FALSE(exists(link_path));
}

TEST(Groups, TheCheckIsForExactlyTheName) {
  EXPECT_EQ(add_dfs_group_node("media"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("media"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("Media"), 0U);
  EXPECT_EQ(chk_dfs_group_exist("medi"), 0U);
  EXPECT_EQ(chk_dfs_group_exist("media "), 0U);
}

TEST(Groups, TheCheckNeverWrites) {
  EXPECT_EQ(chk_dfs_group_exist("media"), 0U);
  EXPECT_FALSE(exists(group_path));
  stored({"media"}, {});
  expect_files_untouched([] {
    EXPECT_EQ(chk_dfs_group_exist("media"), 1U);
    EXPECT_EQ(chk_dfs_group_exist("office"), 0U);
  });
}

TEST(Groups, AnExistingGroupIsRefusedWithoutAWrite) {
  stored({"media"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(add_dfs_group_node("media"), 0U); });
}

TEST(Groups, ANameWithAnAmpersandIsStoredEscaped) {
  EXPECT_EQ(add_dfs_group_node("R&B"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"R&amp;B"}));
  EXPECT_EQ(chk_dfs_group_exist("R&B"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("R&amp;B"), 0U);
  EXPECT_EQ(add_dfs_group_node("R&B"), 0U);
}

TEST(Groups, RenamingAGroupMovesItsLinks) {
  stored({"office", "media"}, {tunes, papers, films});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office", "video"}));
  EXPECT_EQ(read_file(link_path),
            link_file({{"srv1", "music", "tunes", "video"}, papers, {"srv2", "movies", "films", "video"}}));
}

TEST(Groups, RenamingWithAnAmpersandMovesTheLinksToTheSameName) {
  stored({"media"}, {tunes});
  EXPECT_EQ(mod_dfs_group_node("media", "R&B"), 1U);
  EXPECT_EQ(chk_dfs_group_exist("R&B"), 1U);
  EXPECT_EQ(chk_dfs_node_exist("R&B", "tunes"), 1U);
  EXPECT_EQ(mod_dfs_group_node("R&B", "media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"media"}));
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
}

TEST(Groups, RenamingAnAbsentGroupLeavesBothFiles) {
  stored({"office"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U); });
}

// A socket can be opened by nobody, which is no statement about what it holds.
TEST(Groups, WhileTheLinksCannotBeLoadedAGroupStaysAsItIs) {
  Appliance{}.file(group_path, group_file({"media"}));
  bind_socket(link_path);
  const std::string before = read_file(group_path);
  EXPECT_EQ(mod_dfs_group_node("media", "films"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), before);
}

TEST(Groups, RenamingOntoAnotherGroupLeavesTwoOfTheName) {
  stored({"media", "video"}, {tunes, {"srv2", "movies", "films", "video"}});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"video", "video"}));
  EXPECT_EQ(read_file(link_path),
            link_file({{"srv1", "music", "tunes", "video"}, {"srv2", "movies", "films", "video"}}));
}

TEST(Groups, OfTwoEqualGroupsTheFirstIsRenamed) {
  stored({"media", "office", "media"}, {});
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"video", "office", "media"}));
}

TEST(Groups, RenamingAGroupWithoutLinksWritesTheLinkFileToo) {
  Appliance{}.file(group_path, group_file({"media"}));
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 1U);
  EXPECT_EQ(read_file(link_path), link_file({}));
}

TEST(Groups, DeletingAGroupDeletesItsLinks) {
  stored({"media", "office"}, {tunes, papers, films});
  EXPECT_EQ(del_dfs_group_node("media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Groups, DeletingAGroupWithoutLinksRewritesTheLinkFile) {
  Appliance{}
      .file(group_path, group_file({"media"}))
      .file(link_path, "<config><dfs><item><host>srv3</host><share>docs</share><local>papers</local>"
                       "<group>office</group></item></dfs></config>");
  EXPECT_EQ(del_dfs_group_node("media"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({}));
  EXPECT_EQ(read_file(link_path), link_file({papers}));
}

TEST(Groups, DeletingAnAbsentGroupLeavesBothFiles) {
  stored({"office"}, {tunes});
  expect_files_untouched([] { EXPECT_EQ(del_dfs_group_node("media"), 0U); });
}

TEST(Groups, WithoutAFileThereAreNone) {
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_FALSE(exists(group_path));
  EXPECT_FALSE(exists(link_path));
}

TEST(Groups, ABadFileCountsAsEmptyAndIsReplacedByTheNextWrite) {
  Appliance{}.file(group_path, "<config><dfs><item><group>media</group>");
  EXPECT_EQ(chk_dfs_group_exist("media"), 0U);
  EXPECT_EQ(mod_dfs_group_node("media", "video"), 0U);
  EXPECT_EQ(del_dfs_group_node("media"), 0U);
  EXPECT_EQ(read_file(group_path), "<config><dfs><item><group>media</group>");
  EXPECT_EQ(add_dfs_group_node("office"), 1U);
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
}

TEST(Groups, EveryOperationEmptiesTheNameList) {
  stored({"media"}, {tunes});
  const std::vector<std::function<std::uint32_t()>> operations{
      [] { return add_dfs_group_node("office"); },
      [] { return add_dfs_group_node("office"); },
      [] { return chk_dfs_group_exist("office"); },
      [] { return chk_dfs_group_exist("nonesuch"); },
      [] { return mod_dfs_group_node("media", "video"); },
      [] { return mod_dfs_group_node("nonesuch", "video"); },
      [] { return del_dfs_group_node("video"); },
      [] { return del_dfs_group_node("nonesuch"); },
  };
  for (std::size_t i = 0; i < operations.size(); ++i) {
    SCOPED_TRACE(i);
    Insert_Name_Node("before");
    EXPECT_EQ(operations[i](), i % 2 == 0 ? 1U : 0U);
    EXPECT_EQ(Is_Name_Empty(), 1);
    EXPECT_EQ(dfs_list_empty(), 1);
  }
  EXPECT_EQ(read_file(group_path), group_file({"office"}));
}

TEST(Groups, ARenameIsTracedForDebugFlagOneOnly) {
  const std::string trace = "--- [media][video]\n";
  const std::string listing = "DFS list :\nName = srv1\nshare = music\nlocal = tunes\ngroup = media\n\n";
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    stored({"media"}, {tunes});
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { mod_dfs_group_node("media", "video"); }), flag == 0   ? ""
                                                                       : flag == 1 ? trace + listing
                                                                                   : listing);
  }
}

TEST(Groups, ARenameOfAnAbsentGroupIsTracedToo) {
  stored({"office"}, {tunes});
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { mod_dfs_group_node("me%sdia", "video"); }),
              flag == 1 ? "--- [me%sdia][video]\n" : "");
  }
}

TEST(Groups, ARenameWithoutBothNamesIsNotTraced) {
  smb_dbg_flag = 1;
  EXPECT_EQ(output_of([] {
              mod_dfs_group_node("media", "");
              mod_dfs_group_node("", "video");
              mod_dfs_group_node(nullptr, "video");
              mod_dfs_group_node("media", nullptr);
            }),
            "");
}

TEST(Groups, ADeletedGroupsLinksAreListedForAnyDebugFlagButZero) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    stored({"media"}, {tunes});
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { del_dfs_group_node("media"); }),
              flag == 0 ? "" : "DFS list :\nName = srv1\nshare = music\nlocal = tunes\ngroup = media\n\n");
  }
}

TEST(Groups, TheOthersPrintNothing) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] {
                add_dfs_group_node("media");
                add_dfs_group_node("media");
                chk_dfs_group_exist("media");
                del_dfs_group_node("nonesuch");
                get_dfs_group_info();
                write_DFS_group_xml();
              }),
              "");
  }
}

} // namespace
} // namespace nasshare::tests
