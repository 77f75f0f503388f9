// Reading a volume's share XML: where it lies, what counts as an item, and what becomes of odd content.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "text.h"
#include "volume_table.h"
#include "xml.h"

#include <array>
#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace nasshare::tests {
namespace {

// Reads this file as volume 0, the single disk WD-1. Nothing may appear on standard error.
void load(const std::string &text) {
  set_single_disk(0, "WD-1");
  Appliance{}.shares("/mnt/HD_a4", text);
  Captured captured;
  read_HD_xml(0);
  EXPECT_EQ(captured.err(), "");
}

// A file whose "samba" element has this content.
std::string file_of(const std::string &content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element("config", element("samba", content)) + "\n";
}

// An item of the disk WD-1 that is accepted, with further elements.
std::string item(const std::string &name, const std::string &more = "") {
  return element("item", element("volume_raid", "1") + element("hd_serial", "WD-1") + element("name", name) +
                             element("path", "/mnt/HD/HD_a2/x") + more);
}

// The one share of a file, with these further elements in its item.
const smb_share *load_one(const std::string &more) {
  load(file_of(item("Music", more)));
  return check_smb_share_name("Music");
}

// Reading volume 0 lists the file's path and says nothing else.
void expect_path_of_first_volume_alone() {
  const auto read = [] {
    Free_All_List();
    read_HD_xml(0);
  };
  expect_listing(read, "read_HD_xml: read xml path = /mnt/HD_a4/.systemfile/.smb.xml\n");
}

Share untagged_music() {
  return Share{"Music"}.on_disk("WD-1").path("/mnt/HD/HD_a2/music");
}

TEST(ShareXmlReader, LoadsEveryField) {
  load("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
       "<config>\n"
       "  <samba>\n"
       "    <count>1</count>\n"
       "    <item>\n"
       "      <volume_raid>1</volume_raid>\n"
       "      <hd_serial>WD-1</hd_serial>\n"
       "      <name>Music</name>\n"
       "      <comment>All songs</comment>\n"
       "      <path>/mnt/HD/HD_a2/music</path>\n"
       "      <browseable>no</browseable>\n"
       "      <public>no</public>\n"
       "      <oplocks>no</oplocks>\n"
       "      <map_archive>yes</map_archive>\n"
       "      <read_list>#bob#</read_list>\n"
       "      <write_list>#alice#,#@staff#</write_list>\n"
       "      <invalid_users>#nobody#,#carol#</invalid_users>\n"
       "      <valid_users>#mallory#</valid_users>\n"
       "      <recycle_enable>1</recycle_enable>\n"
       "      <recycle_tree>1</recycle_tree>\n"
       "    </item>\n"
       "  </samba>\n"
       "</config>\n");
  ASSERT_EQ(listed_shares(), Names{"Music"});
  const smb_share &share = *pss->head;
  EXPECT_EQ(share.volume_raid, 1);
  EXPECT_STREQ(share.hd_serial, "WD-1");
  EXPECT_STREQ(share.comment, "All songs");
  EXPECT_STREQ(share.path, "/mnt/HD/HD_a2/music");
  EXPECT_STREQ(share.browseable, "yes");
  EXPECT_STREQ(share.public_, "yes");
  EXPECT_STREQ(share.oplocks, "no");
  EXPECT_STREQ(share.map_archive, "yes");
  EXPECT_STREQ(share.read_list, "#bob#");
  EXPECT_STREQ(share.write_list, "#alice#,#@staff#");
  EXPECT_STREQ(share.invalid_users, "#nobody#,#carol#");
  EXPECT_STREQ(share.valid_users, "#bob#,#alice#,#@staff#") << "derived, not read";
  EXPECT_EQ(share.recycle_enable, 1);
  EXPECT_EQ(share.recycle_tree, 1);
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ShareXmlReader, AbsentElementsAreEmpty) {
  load(file_of("<item><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial><name>Music</name>"
               "<path>/mnt/HD/HD_a2</path></item>"));
  ASSERT_EQ(listed_shares(), Names{"Music"});
  EXPECT_STREQ(pss->head->comment, "");
  EXPECT_STREQ(pss->head->oplocks, "");
  EXPECT_STREQ(pss->head->map_archive, "");
  EXPECT_STREQ(pss->head->read_list, "");
  EXPECT_STREQ(pss->head->write_list, everyone);
  EXPECT_EQ(pss->head->recycle_enable, 0);
  EXPECT_EQ(pss->head->recycle_tree, 0);
}

TEST(ShareXmlReader, ReadsTheFileOfItsVolume) {
  set_single_disk(0, "WD-1");
  set_single_disk(1, "WD-2");
  const std::string both =
      share_xml({untagged_music(), Share{"Films"}.on_disk("WD-2").path("/mnt/HD/HD_b2/films")});
  Appliance{}.shares(both);
  read_HD_xml(1);
  EXPECT_EQ(listed_shares(), Names{"Films"});
  read_HD_xml(0);
  EXPECT_EQ(listed_shares(), (Names{"Films", "Music"}));
}

TEST(ShareXmlReader, KnowsNoOtherVolumes) {
  set_single_disk(0, "WD-1");
  set_single_disk(1, "WD-1");
  Appliance{}.shares(share_xml({untagged_music()}));
  expect_silence([] {
    for (const int volume : {-1, 2, INT_MAX, INT_MIN}) {
      read_HD_xml(volume);
    }
  });
  EXPECT_EQ(pss->count, 0);
}

TEST(ShareXmlReader, ReadsAnotherFileInDomainMode) {
  Appliance{}
      .shares("/mnt/HD_a4", share_xml({untagged_music()}))
      .ads_shares("/mnt/HD_a4", share_xml({Share{"Domain"}.on_disk("WD-1").path("/mnt/HD/HD_a2/d")}));
  set_single_disk(0, "WD-1");
  const std::pair<int, const char *> rows[] = {{0, "Music"}, {1, "Domain"}, {2, "Music"}};
  for (const auto &[ads_enable, name] : rows) {
    SCOPED_TRACE(ads_enable);
    pss->ads_enable = ads_enable;
    read_HD_xml(0);
    EXPECT_EQ(listed_shares(), Names{name});
    Free_All_List();
  }
}

TEST(ShareXmlReader, SaysWhichFileItReadsForAnyFlagButZero) {
  Appliance{}.shares("/mnt/HD_a4", share_xml({untagged_music()}));
  set_single_disk(0, "WD-1");
  set_single_disk(1, "WD-2");
  const struct {
    int volume;
    int ads_enable;
    const char *lines;
  } rows[] = {
      {0, 0, "read_HD_xml: read xml path = /mnt/HD_a4/.systemfile/.smb.xml\n"},
      {0, 1,
       "read_HD_xml: read xml path = /mnt/HD_a4/.systemfile/.smb_ads.xml\n"
       "read_HD_xml: read path not exist = /mnt/HD_a4/.systemfile/.smb_ads.xml\n"},
      {1, 0,
       "read_HD_xml: read xml path = /mnt/HD_b4/.systemfile/.smb.xml\n"
       "read_HD_xml: read path not exist = /mnt/HD_b4/.systemfile/.smb.xml\n"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.lines);
    pss->ads_enable = row.ads_enable;
    expect_listing([&row] { read_HD_xml(row.volume); }, row.lines);
  }
}

TEST(ShareXmlReader, AVolumeWithoutAHiddenPathReadsFromTheRoot) {
  set_single_disk(0, "WD-1");
  pss->vol_hidden_path[0][0] = '\0';
  expect_listing([] { read_HD_xml(0); }, "read_HD_xml: read xml path = /.systemfile/.smb.xml\n"
                                         "read_HD_xml: read path not exist = /.systemfile/.smb.xml\n");
  EXPECT_EQ(pss->count, 0);
}

TEST(ShareXmlReader, BrokenFilesLoadNothingAndSayNothing) {
  const std::string folder = PROJECT_FOLDER "/tests/catalogue/bad/";
  const Names files = names_in(folder);
  ASSERT_FALSE(files.empty());
  set_single_disk(0, "WD-1");
  for (const std::string &file : files) {
    SCOPED_TRACE(file);
    Appliance{}.shares("/mnt/HD_a4", read_file(folder + file));
    expect_path_of_first_volume_alone();
    EXPECT_EQ(listed_shares(), Names{});
  }
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ShareXmlReader, ABrokenFileIsReadAgainOnceMended) {
  load("<config><samba>");
  EXPECT_EQ(pss->count, 0);
  load(share_xml({untagged_music()}));
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, AnythingButAFileLoadsNothing) {
  set_single_disk(0, "WD-1");
  Appliance{}.folder(first_share_file);
  Captured captured;
  read_HD_xml(0);
  EXPECT_EQ(pss->count, 0);
  Appliance{}.remove(first_share_file);
  ASSERT_EQ(mkfifo(first_share_file, 0600), 0);
  read_HD_xml(0);
  EXPECT_EQ(pss->count, 0);
  EXPECT_EQ(captured.err(), "");
}

TEST(ShareXmlReader, AFileLongerThanMemoryLoadsNothing) {
  set_single_disk(0, "WD-1");
  const std::string path = first_share_file;
  for (const char *size : {"2147483648", "4294967295", "4294967296"}) {
    Appliance{}.file(path, share_xml({untagged_music()}));
    ASSERT_EQ(run_program({"truncate", "--size", size, path}).status, 0);
    read_HD_xml(0);
    EXPECT_EQ(pss->count, 0) << size;
  }
}

TEST(ShareXmlReader, AFileOfAClockThatIsAheadIsRead) {
  const std::string path = first_share_file;
  Appliance{}.file(path, share_xml({untagged_music()}));
  ASSERT_EQ(run_program({"touch", "--date=2100-01-01", path}).status, 0); // more seconds than 32 bits hold
  set_single_disk(0, "WD-1");
  read_HD_xml(0);
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, ALinkIsFollowed) {
  Appliance{}
      .file("/mnt/elsewhere.xml", share_xml({untagged_music()}))
      .folder("/mnt/HD_a4/.systemfile")
      .link("/mnt/elsewhere.xml", first_share_file);
  set_single_disk(0, "WD-1");
  read_HD_xml(0);
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, OnlyElementsAreItems) {
  load(file_of("<count>2</count><!-- first --><?note second?>stray text &amp; more" + item("Music") +
               "text<!-- <item><name>Ghost</name></item> -->&lt;" + item("Films") +
               "<![CDATA[<item><name>Ghost</name></item>]]>" + item("Docs") + "<!-- end -->"));
  EXPECT_EQ(listed_shares(), (Names{"Music", "Films", "Docs"}));
}

TEST(ShareXmlReader, ItemsStartAtTheFirstItemAndEverySiblingBehindIsOne) {
  std::string other = item("Behind");
  other.replace(1, 4, "misc").replace(other.size() - 5, 4, "misc");
  std::string early = item("Early");
  early.replace(1, 4, "misc").replace(early.size() - 5, 4, "misc");
  load(file_of(early + item("Music") + other + item("Docs")));
  EXPECT_EQ(listed_shares(), (Names{"Music", "Behind", "Docs"}));
}

TEST(ShareXmlReader, OnlyTheFirstSambaElementCounts) {
  load("<config><other>" + item("A") + "</other><samba>" + item("B") + "</samba><samba>" + item("C") +
       "</samba></config>");
  EXPECT_EQ(listed_shares(), Names{"B"});
}

TEST(ShareXmlReader, TheNameOfTheRootIsNotExamined) {
  load("<anything><samba>" + item("Music") + "</samba></anything>");
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, TheCountIsNotRead) {
  for (const char *count : {"", "<count/>", "<count>0</count>", "<count>99999999999</count>"}) {
    SCOPED_TRACE(count);
    Free_All_List();
    load(file_of(count + item("Music") + item("Docs")));
    EXPECT_EQ(listed_shares(), (Names{"Music", "Docs"}));
    EXPECT_EQ(pss->count, 2);
  }
}

TEST(ShareXmlReader, TheFirstElementOfANameCounts) {
  const smb_share *share = load_one("<comment>one</comment><comment>two</comment>");
  ASSERT_NE(share, nullptr);
  EXPECT_STREQ(share->comment, "one");
}

TEST(ShareXmlReader, ElementsMayStandInAnyOrder) {
  load(file_of("<item><path>/mnt/HD/HD_a2/x</path><read_list>#bob#</read_list><name>Music</name>"
               "<hd_serial>WD-1</hd_serial><volume_raid>1</volume_raid></item>"));
  ASSERT_EQ(listed_shares(), Names{"Music"});
  EXPECT_STREQ(pss->head->read_list, "#bob#");
}

TEST(ShareXmlReader, ReadsTheRecycleNumbersAsDecimalText) {
  const std::pair<const char *, int> rows[] = {
      {"1", 1},
      {"0", 0},
      {"", 0},
      {"yes", 0},
      {" 7", 7},
      {"\n 1 \n", 1},
      {"-1", -1},
      {"+2", 2},
      {"3x", 3},
      {"0x10", 0},
      {"99999999999", INT_MAX},
      {"-99999999999", INT_MIN},
  };
  for (const auto &[text, number] : rows) {
    SCOPED_TRACE(text);
    Free_All_List();
    const smb_share *share = load_one("<recycle_enable>" + std::string(text) +
                                      "</recycle_enable><recycle_tree>" + text + "</recycle_tree>");
    ASSERT_NE(share, nullptr);
    EXPECT_EQ(share->recycle_enable, number);
    EXPECT_EQ(share->recycle_tree, number);
  }
}

TEST(ShareXmlReader, AListedNameIsDroppedSilently) {
  set_single_disk(0, "WD-1");
  Appliance{}.shares("/mnt/HD_a4", file_of(item("Music", "<comment>first</comment>") + item("Docs") +
                                           item("Music", "<comment>second</comment>")));
  expect_path_of_first_volume_alone();
  EXPECT_EQ(listed_shares(), (Names{"Music", "Docs"}));
  EXPECT_STREQ(pss->head->comment, "first");
}

TEST(ShareXmlReader, AnItemWithoutANameIsDropped) {
  load(file_of(item("") + item("Music")));
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, ARecordOfAnotherDiskIsSkippedSilently) {
  set_single_disk(0, "WD-1");
  Appliance{}.shares("/mnt/HD_a4",
                     share_xml({Share{"Films"}.on_disk("WD-2").path("/mnt/HD/HD_a2/f"),
                                Share{"Docs"}.on_disk("").path("/mnt/HD/HD_a2/d"), untagged_music()}));
  expect_path_of_first_volume_alone();
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, APathOutsideTheVolumeIsSkippedAndShownWhenDebugging) {
  set_volume(1, 4, "/dev/md1", "UUID=1:2");
  Appliance{}.shares("/mnt/HD_b4", share_xml({Share{"A"}.on_array(4, "1:2").path("/mnt/HD/HD_a2/100%s"),
                                              Share{"B"}.on_array(4, "1:2").path("/backup/mnt/HD/HD_b2/x"),
                                              Share{"C"}.on_array(4, "1:2"),
                                              Share{"D"}.on_array(4, "1:2").path("/mnt/HD/HD_b2extra")}));
  const auto read = [] {
    Free_All_List();
    read_HD_xml(1);
    EXPECT_EQ(listed_shares(), (Names{"B", "D"})) << "the mount point may stand anywhere in the path";
  };
  expect_listing(read, "read_HD_xml: read xml path = /mnt/HD_b4/.systemfile/.smb.xml\n"
                       "xxxxxxxxxxxxxxxxx[/mnt/HD/HD_a2/100%s][1]\n"
                       "xxxxxxxxxxxxxxxxx[][1]\n");
}

TEST(ShareXmlReader, APathOfASingleDiskIsMovedOntoItsVolume) {
  const std::pair<const char *, const char *> rows[] = {
      {"/mnt/HD_a4/Music", "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD_b4/Music", "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD/HD_b2/Music", "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD/HD_a2/Music", "/mnt/HD/HD_a2/Music"},
      {"", "/mnt/HD/HD_a2"},
  };
  for (const auto &[stored, path] : rows) {
    SCOPED_TRACE(stored);
    Free_All_List();
    load(share_xml({Share{"Music"}.on_disk("WD-1").path(stored)}));
    ASSERT_EQ(listed_shares(), Names{"Music"});
    EXPECT_STREQ(pss->head->path, path);
    EXPECT_EQ(pss->list_changed, 0);
  }
}

TEST(ShareXmlReader, AVolumeShareTakesItsConfiguredName) {
  const struct {
    const char *name;
    const char *path;
    const char *configured;
    const char *result;
  } rows[] = {
      {"Volume_1", "/mnt/HD/HD_a2", "Family", "Family"},
      {"Volume_2", "/mnt/HD/HD_a2", "Family", "Family"},
      {"Volume_1", "/mnt/HD/HD_b2", "Family", "Family"},
      {"Volume_1", "/mnt/HD_a4", "Family", "Family"},
      {"Volume_1", "/mnt/HD/HD_a2", "", "Volume_1"},
      {"Volume_1", "/mnt/HD/HD_a2/", "Family", "Volume_1"},
      {"Volume_1", "/mnt/HD/HD_a2/sub", "Family", "Volume_1"},
      {"volume_1", "/mnt/HD/HD_a2", "Family", "volume_1"},
      {"Volume_3", "/mnt/HD/HD_a2", "Family", "Volume_3"},
      {"Volume_1x", "/mnt/HD/HD_a2", "Family", "Volume_1x"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.name) + " at " + row.path + ", configured " + row.configured);
    Free_All_List();
    put(pss->vol_share_name[0], row.configured);
    put(pss->vol_share_name[1], "Other");
    load(share_xml({Share{row.name}.on_disk("WD-1").path(row.path)}));
    EXPECT_EQ(listed_shares(), Names{row.result});
  }
}

TEST(ShareXmlReader, RestoresAmpersandsInNameCommentAndPath) {
  load(file_of("<item><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial>"
               "<name>R&amp;D</name><comment>a&amp;amp;b&amp;amp;amp;c &lt;d&gt; &#228;</comment>"
               "<path>/mnt/HD/HD_a2/R&amp;amp;D</path><read_list>#R&amp;D#</read_list>"
               "<write_list>#x&amp;amp;y#</write_list></item>"));
  ASSERT_EQ(listed_shares(), Names{"R&D"});
  EXPECT_STREQ(pss->head->comment, "a&b&amp;c <d> \xC3\xA4");
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/R&D");
  EXPECT_STREQ(pss->head->read_list, "#R&D#");
  EXPECT_STREQ(pss->head->write_list, "#x&amp;y#") << "lists are taken as read";
}

TEST(ShareXmlReader, ReadsOtherEncodings) {
  load("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><config><samba>" + item("M\xFCsik") +
       "</samba></config>");
  EXPECT_EQ(listed_shares(), Names{"M\xC3\xBCsik"});
}

TEST(ShareXmlReader, IncludesNoOtherFile) {
  Appliance{}.file("/etc/secret", "root:hash");
  load("<!DOCTYPE config [<!ENTITY x SYSTEM \"file:///etc/secret\">]><config><samba>" +
       item("Music", "<comment>a&x;b</comment>") + "</samba></config>");
  EXPECT_EQ(listed_shares(), Names{"Music"});
  EXPECT_STREQ(pss->head->comment, "ab");
}

TEST(ShareXmlReader, LongTextIsCutToItsField) {
  const std::string x600(600, 'x');
  const smb_share *share = nullptr;
  load(file_of(item(x600, "<comment>" + x600 + "</comment><browseable>" + x600 + "</browseable><public>" +
                              x600 + "</public><oplocks>" + x600 + "</oplocks><map_archive>" + x600 +
                              "</map_archive><recycle_enable>1</recycle_enable>")));
  ASSERT_EQ(listed_shares(), Names{std::string(511, 'x')});
  share = pss->head;
  EXPECT_STREQ(share->hd_serial, "WD-1");
  EXPECT_EQ(share->comment, std::string(511, 'x'));
  EXPECT_STREQ(share->path, "/mnt/HD/HD_a2/x");
  EXPECT_STREQ(share->browseable, "yes");
  EXPECT_STREQ(share->public_, "yes");
  EXPECT_EQ(share->oplocks, std::string(7, 'x'));
  EXPECT_EQ(share->map_archive, std::string(7, 'x'));
  EXPECT_STREQ(share->read_list, "");
  EXPECT_EQ(share->recycle_enable, 1);
}

TEST(ShareXmlReader, LongPathsAreCutToTheirField) {
  load(share_xml({Share{"Music"}.on_disk("WD-1").path("/mnt/HD_b4/" + std::string(4084, 'p'))}));
  ASSERT_EQ(listed_shares(), Names{"Music"});
  EXPECT_EQ(pss->head->path, "/mnt/HD/HD_a2/" + std::string(4081, 'p'));
  Free_All_List();

  load(file_of("<item><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial><name>Music</name><path>"
               "/mnt/HD/HD_a2/" +
               std::string(5000, 'p') + "</path><oplocks>no</oplocks></item>"));
  ASSERT_EQ(listed_shares(), Names{"Music"});
  EXPECT_EQ(pss->head->path, "/mnt/HD/HD_a2/" + std::string(4081, 'p'));
  EXPECT_STREQ(pss->head->browseable, "yes");
  EXPECT_STREQ(pss->head->oplocks, "no");
}

TEST(ShareXmlReader, ALongSerialBelongsToNoDisk) {
  load(file_of("<item><volume_raid>1</volume_raid><hd_serial>" + std::string(600, '1') +
               "</hd_serial><name>Long</name><path>/mnt/HD/HD_a2</path></item>" + item("Music")));
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlReader, CutsTextBetweenCharacters) {
  const struct {
    std::string stored;
    std::string kept;
  } rows[] = {
      {std::string(509, 'x') + "\xC3\xA4", std::string(509, 'x') + "\xC3\xA4"},
      {std::string(510, 'x') + "\xC3\xA4", std::string(510, 'x')},
      {std::string(509, 'x') + "\xE2\x82\xAC", std::string(509, 'x')},
      {std::string(508, 'x') + "\xF0\x9F\x8E\xB5", std::string(508, 'x')},
      {std::string(507, 'x') + "\xF0\x9F\x8E\xB5z", std::string(507, 'x') + "\xF0\x9F\x8E\xB5"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.stored.substr(500));
    Free_All_List();
    const smb_share *share = load_one("<comment>" + row.stored + "</comment>");
    ASSERT_NE(share, nullptr);
    EXPECT_EQ(share->comment, row.kept);
  }
}

TEST(ShareXmlReader, CutsTextBetweenEntities) {
  // The text of the element is "xx...&lt;", which is no markup any more but still one entity.
  const smb_share *share = load_one("<comment>" + std::string(509, 'x') + "&amp;lt;</comment>");
  ASSERT_NE(share, nullptr);
  EXPECT_EQ(share->comment, std::string(509, 'x'));
}

TEST(ShareXmlReader, AmpersandsAreRestoredBeforeTheCut) {
  const smb_share *share = load_one(element("comment", repeated("&amp;amp;", 511)));
  ASSERT_NE(share, nullptr);
  EXPECT_EQ(share->comment, std::string(511, '&'));
}

TEST(ShareXmlReader, CutsListsBetweenEntries) {
  std::string list = "#user0000#";
  for (int i = 1; i < 2000; ++i) {
    std::array<char, 16> entry{};
    std::snprintf(entry.data(), entry.size(), ",#user%04d#", i);
    list += entry.data();
  }
  // 1117 entries of ten bytes, each with its comma, fill the 12287 bytes of a list exactly: 11 * 1117 =
  // 12287.
  const std::string kept = list.substr(0, 11 * 1117 - 1);
  const smb_share *share =
      load_one("<read_list>" + list + "</read_list><write_list>#alice#</write_list><invalid_users>" + list +
               "</invalid_users><recycle_enable>1</recycle_enable>");
  ASSERT_NE(share, nullptr);
  EXPECT_EQ(share->read_list, kept);
  EXPECT_STREQ(share->write_list, "#alice#");
  EXPECT_EQ(share->valid_users, kept) << "there is no room for another entry";
  EXPECT_EQ(std::string(share->invalid_users).rfind("#nobody#,#user0000#,", 0), 0U);
  EXPECT_EQ(std::string(share->invalid_users).back(), '#');
  EXPECT_EQ(share->recycle_enable, 1);
}

TEST(ShareXmlReader, AListOfFullWidthIsReadWhole) {
  const std::string list = "#alice#,#" + std::string(12277, 'b') + "#";
  ASSERT_EQ(list.size(), 12287U);
  const smb_share *share = load_one("<read_list>" + list + "</read_list>");
  ASSERT_NE(share, nullptr);
  EXPECT_EQ(share->read_list, list);
  Free_All_List();
  share = load_one("<read_list>" + list + ",#carol#</read_list>");
  ASSERT_NE(share, nullptr);
  EXPECT_EQ(share->read_list, list);
  Free_All_List();
  share = load_one("<read_list>#alice#,#" + std::string(12278, 'b') + "#</read_list>");
  ASSERT_NE(share, nullptr);
  EXPECT_STREQ(share->read_list, "#alice#");
}

TEST(ShareXmlReader, AnEndlessEntryDoesNotOpenTheShare) {
  const smb_share *share = load_one("<read_list>#" + std::string(20000, 'x') + "#</read_list>");
  ASSERT_NE(share, nullptr);
  EXPECT_STREQ(share->write_list, "");
  EXPECT_STREQ(share->invalid_users, "#nobody#");
}

TEST(ShareXmlReader, ReadsManyShares) {
  std::string items;
  for (int i = 0; i < 300; ++i) {
    items += item("Share" + std::to_string(i));
  }
  load(file_of(items));
  EXPECT_EQ(pss->count, 300);
  EXPECT_STREQ(pss->head->name, "Share0");
  EXPECT_STREQ(pss->tail->name, "Share299");
}

} // namespace
} // namespace nasshare::tests
