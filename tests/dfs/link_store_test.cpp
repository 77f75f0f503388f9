// The link file: how it is read and how the list replaces it.
#include "appliance.h"
#include "debug_output.h"
#include "links.h"
#include "nasshare/support.h"
#include "output.h"
#include "unopenable.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

// The list that comes of a file with this text, in place of one that held a link.
Links links_of(const std::string &text) {
  Appliance{}.file(link_path, text);
  dfs_remove_all();
  list_link(papers);
  read_DFS_xml();
  return listed_links();
}

TEST(LinkStore, TheListIsWrittenAsItems) {
  list_link(tunes);
  list_link(papers);
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<config>\n"
                                  "  <dfs>\n"
                                  "    <item>\n"
                                  "      <host>srv1</host>\n"
                                  "      <share>music</share>\n"
                                  "      <local>tunes</local>\n"
                                  "      <group>media</group>\n"
                                  "    </item>\n"
                                  "    <item>\n"
                                  "      <host>srv3</host>\n"
                                  "      <share>docs</share>\n"
                                  "      <local>papers</local>\n"
                                  "      <group>office</group>\n"
                                  "    </item>\n"
                                  "  </dfs>\n"
                                  "</config>\n");
  EXPECT_EQ(listed_links(), (Links{tunes, papers}));
}

// What could not be read once does not keep what has been read since from being stored.
TEST(LinkStore, AListThatWasReadIsWrittenWhateverFailedBefore) {
  Appliance{}.file(link_path, link_file({tunes})).exports("\"/mnt/HD/HD_a2/x\" *\n");
  {
    const DescriptorLimit limit(0);
    EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/x"), 0);
  }
  read_DFS_xml();
  list_link(papers);
  write_DFS_xml();
  EXPECT_EQ(stored_links(), (Links{tunes, papers}));
}

// Two that write at once would take each other's half file for the whole one.
TEST(LinkStore, IsNotWrittenWhileAnotherProgramChangesIt) {
  Appliance{}.file(link_path, link_file({tunes}));
  for (const char *lock : {"/run/nasshare-dfs-links.lock", "/run/nasshare-dfs-groups.lock"}) {
    const int other = open(lock, O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    const Ended ended = run_to_exit([lock] {
      alarm(1);
      std::string_view(lock).find("links") != std::string_view::npos ? write_DFS_xml()
                                                                     : write_DFS_group_xml();
    });
    EXPECT_EQ(ended.status, 128 + SIGALRM) << lock;
    EXPECT_EQ(stored_links(), Links{tunes});
    EXPECT_FALSE(exists(group_path));
    close(other);
  }
  write_DFS_xml();
  write_DFS_group_xml();
  EXPECT_EQ(stored_links(), Links{});
  EXPECT_TRUE(exists(group_path));
}

// Whoever may read a lock can hold it.
TEST(LinkStore, ItsLockIsForNobodyElseToRead) {
  Appliance{}.file("/run/nasshare-dfs-links.lock", "");
  ASSERT_EQ(mode("/run/nasshare-dfs-links.lock"), 0644U);
  write_DFS_xml();
  EXPECT_EQ(mode("/run/nasshare-dfs-links.lock"), 0600U);
}

TEST(LinkStore, AnEmptyListIsAnEmptyElement) {
  Appliance{}.file(link_path, link_file({tunes}));
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<config>\n"
                                  "  <dfs/>\n"
                                  "</config>\n");
}

TEST(LinkStore, EmptyFieldsAreWrittenToo) {
  list_link({"", "", "", ""});
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<config>\n"
                                  "  <dfs>\n"
                                  "    <item>\n"
                                  "      <host/>\n"
                                  "      <share/>\n"
                                  "      <local/>\n"
                                  "      <group/>\n"
                                  "    </item>\n"
                                  "  </dfs>\n"
                                  "</config>\n");
}

TEST(LinkStore, WritingReplacesTheFileAndNotWhatItLinksTo) {
  Appliance{}.file("/etc/elsewhere.xml", "old").link("/etc/elsewhere.xml", link_path);
  list_link(tunes);
  write_DFS_xml();
  EXPECT_EQ(read_file("/etc/elsewhere.xml"), "old");
  EXPECT_EQ(read_file(link_path), link_file({tunes}));
  EXPECT_EQ(names_in("/etc/NAS_CFG"), Names{"smbdfs.xml"});
}

TEST(LinkStore, AListedFieldIsWrittenAsMarkup) {
  struct Row {
    std::string field;
    std::string written;
  };
  const std::vector<Row> rows{
      {"R&amp;B", "R&amp;B"},     {"R&B", "R&amp;B"},
      {"&#38;", "&amp;"},         {"&#x26;", "&amp;"},
      {"&amp;amp;", "&amp;amp;"}, {"&lt;b&gt;", "&lt;b&gt;"},
      {"a<b>c", "a&lt;b&gt;c"},   {"&quot;&apos;", "\"'"},
      {"&#228;", "\u00e4"},       {"&nonesuch;", "&amp;nonesuch;"},
      {"&#0;&", "&amp;#0;&amp;"}, {"\x01", "\uFFFD"},
      {"\xff", "\uFFFD"},
  };
  for (const auto &[field, written] : rows) {
    SCOPED_TRACE(field);
    dfs_remove_all();
    list_link({field, field, field, field});
    write_DFS_xml();
    EXPECT_EQ(read_file(link_path), link_file({{written, written, written, written}}));
  }
}

TEST(LinkStore, ReadingReplacesTheList) {
  EXPECT_EQ(links_of(link_file({tunes, films})), (Links{tunes, films}));
  EXPECT_EQ(pdfs->count, 2U);
}

TEST(LinkStore, WithoutAFileTheListStays) {
  list_link(papers);
  read_DFS_xml();
  EXPECT_EQ(listed_links(), Links{papers});
}

TEST(LinkStore, ReadValuesAreDecoded) {
  EXPECT_EQ(links_of(link_file({{"a&amp;b", "&lt;x&gt;", "&#228;&quot;", "&amp;amp;<![CDATA[&]]>"}})),
            (Links{{"a&b", "<x>", "\u00e4\"", "&amp;&"}}));
}

TEST(LinkStore, AFileThatIsNoXmlEmptiesTheList) {
  for (const char *text : {"", "text", "<config>", "<config><dfs><item></dfs></config>",
                           "<config><dfs><item><host>a&b</host></item></dfs></config>"}) {
    SCOPED_TRACE(text);
    Captured captured;
    EXPECT_EQ(links_of(text), Links{});
    EXPECT_EQ(captured.out(), "");
    EXPECT_EQ(captured.err(), "");
  }
}

TEST(LinkStore, AFolderOfThatNameEmptiesTheList) {
  Appliance{}.folder(link_path);
  list_link(papers);
  read_DFS_xml();
  EXPECT_EQ(listed_links(), Links{});
}

TEST(LinkStore, TheNameOfTheRootDoesNotMatter) {
  EXPECT_EQ(links_of("<other><dfs><item><host>srv1</host><share>music</share><local>tunes</local>"
                     "<group>media</group></item></dfs></other>"),
            Links{tunes});
}

TEST(LinkStore, WithoutDfsOrItemThereAreNoLinks) {
  for (const char *text :
       {"<config/>", "<dfs><item><host>srv1</host></item></dfs>", "<config><dfs/></config>",
        "<config><links><item/></links></config>", "<config><dfs>text</dfs></config>",
        "<config><dfs><link><host>srv1</host></link></dfs></config>"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(links_of(text), Links{});
  }
}

TEST(LinkStore, TheFirstDfsElementCounts) {
  EXPECT_EQ(links_of("<config><samba><item/></samba><dfs><item><host>one</host></item></dfs>"
                     "<dfs><item><host>two</host></item></dfs></config>"),
            (Links{{"one", "", "", ""}}));
}

TEST(LinkStore, FromTheFirstItemOnEveryElementIsALink) {
  EXPECT_EQ(links_of("<config><dfs><before><host>one</host></before><item><host>two</host></item>"
                     "<entry><host>three</host></entry><!-- four --><item><host>five</host></item>"
                     "</dfs></config>"),
            (Links{{"two", "", "", ""}, {"three", "", "", ""}, {"five", "", "", ""}}));
}

TEST(LinkStore, AMissingChildIsAnEmptyField) {
  EXPECT_EQ(links_of("<config><dfs><item/><item><group>media</group></item>"
                     "<item><local>tunes</local><host>srv1</host></item></dfs></config>"),
            (Links{{"", "", "", ""}, {"", "", "", "media"}, {"srv1", "", "tunes", ""}}));
}

TEST(LinkStore, TheFirstChildOfANameCounts) {
  EXPECT_EQ(links_of("<config><dfs><item><host>one</host><host>two</host><other/><share>music</share>"
                     "</item></dfs></config>"),
            (Links{{"one", "music", "", ""}}));
}

TEST(LinkStore, LongerValuesAreCutAndTheirNeighboursKept) {
  const std::string field(511, 'x');
  const std::string longer(5000, 'x');
  EXPECT_EQ(links_of(link_file({{longer, "s", longer, "g"}, {"h", longer, "l", longer}})),
            (Links{{field, "s", field, "g"}, {"h", field, "l", field}}));
}

TEST(LinkStore, AValueIsCutOnAWholeCharacter) {
  const std::string before(510, 'x');
  EXPECT_EQ(links_of(link_file({{before + "\u00e9", "s", "l", "g"}})), (Links{{before, "s", "l", "g"}}));
}

TEST(LinkStore, ThousandsOfLinksKeepTheirOrder) {
  Links links;
  for (int i = 0; i < 3000; ++i) {
    links.push_back({"srv", "music", "link" + std::to_string(i), "media"});
  }
  EXPECT_EQ(links_of(link_file(links)), links);
  write_DFS_xml();
  EXPECT_EQ(read_file(link_path), link_file(links));
}

TEST(LinkStore, LoadingEmptiesTheListFirst) {
  list_link(papers);
  get_dfs_info();
  EXPECT_EQ(listed_links(), Links{});
  Appliance{}.file(link_path, link_file({tunes}));
  list_link(papers);
  get_dfs_info();
  EXPECT_EQ(listed_links(), Links{tunes});
}

TEST(LinkStore, LoadingPrintsWhatItLoadedForAnyDebugFlagButZero) {
  Appliance{}.file(link_path, link_file({tunes}));
  expect_listing(get_dfs_info, link_listing({tunes}));
}

TEST(LinkStore, LoadingPrintsHeadAndEndWithoutLinks) {
  expect_listing(get_dfs_info, link_listing({}));
}

} // namespace
} // namespace nasshare::tests
