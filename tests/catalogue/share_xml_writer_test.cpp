// Writing the share list into a share XML file, and that whatever is written can be read back.
#include "appliance.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "text.h"
#include "volume_table.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace nasshare::tests {
namespace {

const std::string replacement = "\xEF\xBF\xBD"; // U+FFFD

Share on_disk(std::string_view name) {
  return Share{name}.on_disk("WD-1").path("/mnt/HD/HD_a2/x");
}

// Writes the list as volume 0's file, which has to succeed in silence.
void write() {
  Appliance{}.folder("/mnt/HD_a4/.systemfile");
  Captured captured;
  EXPECT_EQ(create_HD_xml(first_share_file), 0);
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(captured.err(), "");
}

// Writes the list, empties it and fills it again from the file.
void write_and_read_back() {
  write();
  Free_All_List();
  set_single_disk(0, "WD-1");
  read_HD_xml(0);
}

// The only listed share after a write and a read.
const smb_share &read_back(const Share &share) {
  Free_All_List();
  Insert_Smb_Node(share);
  write_and_read_back();
  EXPECT_EQ(pss->count, 1);
  static const smb_share none{};
  return pss->count == 0 ? none : *pss->head;
}

// The text of an element in the stored file.
std::string stored_text(const std::string &name) {
  const std::string text = read_file(first_share_file);
  const std::size_t start = text.find("<" + name + ">");
  if (start == std::string::npos) {
    return "no such element";
  }
  const std::size_t from = start + name.size() + 2;
  return text.substr(from, text.find("</" + name + ">", from) - from);
}

TEST(ShareXmlWriter, WritesTheWholeList) {
  Insert_Smb_Node(Share{"Music"}
                      .on_disk("WD-TESTDISK0001")
                      .comment("Everybody listens, alice fills it")
                      .path("/mnt/HD/HD_a2/music")
                      .oplocks("no")
                      .map_archive("yes")
                      .read("#bob#,#@staff#")
                      .write("#alice#")
                      .deny("#carol#")
                      .recycle(1, 1));
  Insert_Smb_Node(Share{"R&D <lab>"}
                      .on_array(4, "7cc3a0e9:85fa470b:aecd3d11:561a7e11")
                      .comment("\"F\xC3\xBCnf\" & 'sechs' &amp; \xE2\x99\xAB")
                      .path("/mnt/HD/HD_a2/R&D")
                      .oplocks("yes")
                      .map_archive("no")
                      .write("#R&D#,#a<b#"));
  Insert_Smb_Node(Share{"Bare"});
  write();
  EXPECT_EQ(read_file(first_share_file), read_file(PROJECT_FOLDER "/tests/catalogue/golden/shares.xml"));
}

TEST(ShareXmlWriter, AnEmptyListIsWrittenToTheTemporaryFile) {
  EXPECT_EQ(create_HD_xml(temporary_share_file), 0);
  EXPECT_EQ(read_file(temporary_share_file), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                             "<config>\n"
                                             "  <samba/>\n"
                                             "</config>\n");
}

TEST(ShareXmlWriter, AnEmptyListReplacesAnOlderTemporaryFile) {
  Insert_Smb_Node(on_disk("Music"));
  EXPECT_EQ(create_HD_xml(temporary_share_file), 0);
  Free_All_List();
  EXPECT_EQ(create_HD_xml(temporary_share_file), 0);
  EXPECT_EQ(read_file(temporary_share_file), share_xml({}));
}

TEST(ShareXmlWriter, AnEmptyListLeavesAnyOtherTargetUntouched) {
  for (const char *target : {first_share_file, "/tmp//.smb.xml", "/tmp/.smb.xm", "/tmp/.smb.xml2"}) {
    SCOPED_TRACE(target);
    Appliance{}.file(target, "whatever was there");
    EXPECT_EQ(create_HD_xml(target), 0);
    EXPECT_EQ(read_file(target), "whatever was there");
    Appliance{}.remove(target);
    EXPECT_EQ(create_HD_xml(target), 0);
    EXPECT_FALSE(exists(target));
  }
}

TEST(ShareXmlWriter, TheFirstUsbDiskIsDroppedFromFileAndList) {
  for (const char *name :
       {"Music", "USBDisk1", "USBDisk1_1", "My USBDisk1 copy", "USBDisk10", "USBDisk2", "usbdisk1"}) {
    Insert_Smb_Node(on_disk(name));
  }
  write();
  EXPECT_EQ(listed_shares(), (Names{"Music", "USBDisk2", "usbdisk1"}));
  EXPECT_EQ(pss->count, 3);
  EXPECT_EQ(stored_text("count"), "3");
  EXPECT_EQ(read_file(first_share_file).find("USBDisk1"), std::string::npos);
  EXPECT_NE(read_file(first_share_file).find("<name>USBDisk2</name>"), std::string::npos);
}

TEST(ShareXmlWriter, AListOfTheFirstUsbDiskAloneIsEmpty) {
  Appliance{}.file("/tmp/other.xml", "whatever was there");
  Insert_Smb_Node(on_disk("USBDisk1_1"));
  EXPECT_EQ(create_HD_xml("/tmp/other.xml"), 0);
  EXPECT_EQ(read_file("/tmp/other.xml"), "whatever was there");
  EXPECT_EQ(Is_Smb_Empty(), 1);

  Insert_Smb_Node(on_disk("USBDisk1_1"));
  EXPECT_EQ(create_HD_xml(temporary_share_file), 0);
  EXPECT_EQ(read_file(temporary_share_file), share_xml({}));
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(ShareXmlWriter, NameCommentAndPathStayEscapedInMemory) {
  Insert_Smb_Node(
      Share{"R&D"}.tag(1, "WD&1").comment("a & b").path("/mnt/HD/HD_a2/R&D").oplocks("y&n").read("#R&D#"));
  write();
  const smb_share &share = *pss->head;
  EXPECT_STREQ(share.name, "R&amp;D");
  EXPECT_STREQ(share.comment, "a &amp; b");
  EXPECT_STREQ(share.path, "/mnt/HD/HD_a2/R&amp;D");
  EXPECT_STREQ(share.hd_serial, "WD&1");
  EXPECT_STREQ(share.oplocks, "y&n");
  EXPECT_STREQ(share.read_list, "#R&D#");
  EXPECT_EQ(check_smb_share_name("R&D"), nullptr);
  EXPECT_NE(check_smb_share_name("R&amp;D"), nullptr);
}

TEST(ShareXmlWriter, ASecondWriteEscapesAgainAndIsStillReadBack) {
  Insert_Smb_Node(on_disk("R&D"));
  write();
  EXPECT_EQ(stored_text("name"), "R&amp;D");
  write();
  EXPECT_EQ(stored_text("name"), "R&amp;amp;D");
  Free_All_List();
  set_single_disk(0, "WD-1");
  read_HD_xml(0);
  EXPECT_EQ(listed_shares(), Names{"R&D"});
}

TEST(ShareXmlWriter, ANameWithAnAmpersandComesBack) {
  const smb_share &share =
      read_back(Share{"R&D"}.on_disk("WD-1").comment("&&<>\"' ]]> &lt;").path("/mnt/HD/HD_a2/R&D"));
  EXPECT_STREQ(share.name, "R&D");
  EXPECT_STREQ(share.comment, "&&<>\"' ]]> &lt;");
  EXPECT_STREQ(share.path, "/mnt/HD/HD_a2/R&D");
}

TEST(ShareXmlWriter, EveryFieldComesBack) {
  const smb_share &share = read_back(Share{"Musik f\xC3\xBCr alle"}
                                         .on_disk("WD-1")
                                         .comment(" two  blanks \t tab\nline\rreturn ")
                                         .path("/mnt/HD/HD_a2/My Music")
                                         .oplocks("no")
                                         .map_archive("yes")
                                         .read("#bob#")
                                         .write("#alice#,#@staff#")
                                         .deny("#nobody#,#carol#")
                                         .recycle(1, 1));
  EXPECT_EQ(share.volume_raid, 1);
  EXPECT_STREQ(share.hd_serial, "WD-1");
  EXPECT_STREQ(share.name, "Musik f\xC3\xBCr alle");
  EXPECT_STREQ(share.comment, " two  blanks \t tab\nline\rreturn ");
  EXPECT_STREQ(share.path, "/mnt/HD/HD_a2/My Music");
  EXPECT_STREQ(share.oplocks, "no");
  EXPECT_STREQ(share.map_archive, "yes");
  EXPECT_STREQ(share.read_list, "#bob#");
  EXPECT_STREQ(share.write_list, "#alice#,#@staff#");
  EXPECT_STREQ(share.invalid_users, "#nobody#,#carol#");
  EXPECT_STREQ(share.valid_users, "#bob#,#alice#,#@staff#");
  EXPECT_EQ(share.recycle_enable, 1);
  EXPECT_EQ(share.recycle_tree, 1);
}

TEST(ShareXmlWriter, ACommentOfBlanksComesBack) {
  EXPECT_STREQ(read_back(on_disk("Music").comment("  ")).comment, "  ");
}

TEST(ShareXmlWriter, NumbersAreDecimal) {
  Insert_Smb_Node(on_disk("Music").tag(INT_MIN, "WD-1").recycle(-7, INT_MAX));
  write();
  EXPECT_EQ(stored_text("volume_raid"), "-2147483648");
  EXPECT_EQ(stored_text("recycle_enable"), "-7");
  EXPECT_EQ(stored_text("recycle_tree"), "2147483647");
}

TEST(ShareXmlWriter, WhatTheListedRecordSaysIsWritten) {
  Insert_Smb_Node(on_disk("Music"));
  put(pss->head->browseable, "no");
  put(pss->head->public_, "no");
  put(pss->head->valid_users, "#mallory#");
  write();
  EXPECT_EQ(stored_text("browseable"), "no");
  EXPECT_EQ(stored_text("public"), "no");
  EXPECT_EQ(read_file(first_share_file).find("mallory"), std::string::npos)
      << "the valid users are never stored";
}

TEST(ShareXmlWriter, SharesOfAllVolumesGoIntoEveryFile) {
  Insert_Smb_Node(on_disk("Music"));
  Insert_Smb_Node(Share{"Films"}.on_disk("WD-2").path("/mnt/HD/HD_b2/films"));
  write();
  EXPECT_EQ(stored_text("count"), "2");
  Free_All_List();
  set_single_disk(0, "WD-1");
  read_HD_xml(0);
  EXPECT_EQ(listed_shares(), Names{"Music"});
}

TEST(ShareXmlWriter, MarkupInTheOtherFieldsStaysWhatItIs) {
  const struct {
    const char *list;
    const char *in_the_file;
    const char *read;
  } rows[] = {
      // References that XML knows are what they stand for.
      {"#R&amp;D#", "#R&amp;D#", "#R&D#"},
      {"#a&lt;b&gt;c#", "#a&lt;b&gt;c#", "#a<b>c#"},
      {"#&quot;x&apos;#", "#\"x'#", "#\"x'#"},
      {"#&#228;&#xe4;&#xE4;#", "#\xC3\xA4\xC3\xA4\xC3\xA4#", "#\xC3\xA4\xC3\xA4\xC3\xA4#"},
      {"#&#65;&#x1F3B5;#", "#A\xF0\x9F\x8E\xB5#", "#A\xF0\x9F\x8E\xB5#"},
      {"#&#38;lt;#", "#&amp;lt;#", "#&lt;#"},
      {"#&amp;amp;#", "#&amp;amp;#", "#&amp;#"},
      {"#&#9;&#10;&#13;#", "#\t\n&#13;#", "#\t\n\r#"},
      {"#&#x0000000000000041;&#000000000000000066;#", "#AB#", "#AB#"},
      // A "&" that begins none is a "&".
      {"#R&D#", "#R&amp;D#", "#R&D#"},
      {"&", "&amp;", "&"},
      {"#R&D;#", "#R&amp;D;#", "#R&D;#"},
      {"#&&&amp;&#", "#&amp;&amp;&amp;&amp;#", "#&&&&#"},
      {"#a & b;#", "#a &amp; b;#", "#a & b;#"},
      {"#&x;#", "#&amp;x;#", "#&x;#"},
      {"#&nbsp;&AMP;&Lt;#", "#&amp;nbsp;&amp;AMP;&amp;Lt;#", "#&nbsp;&AMP;&Lt;#"},
      {"#&amp#", "#&amp;amp#", "#&amp#"},
      {"#&lt,#x;#", "#&amp;lt,#x;#", "#&lt,#x;#"},
      {"#&;#", "#&amp;;#", "#&;#"},
      {"#& amp;&am p;#", "#&amp; amp;&amp;am p;#", "#& amp;&am p;#"},
      // Nor does one begin a reference to a character that XML cannot hold.
      {"#&#1;&#0;&#x1f;#", "#&amp;#1;&amp;#0;&amp;#x1f;#", "#&#1;&#0;&#x1f;#"},
      {"#&#xD800;&#xDFFF;&#xFFFE;&#xFFFF;#", "#&amp;#xD800;&amp;#xDFFF;&amp;#xFFFE;&amp;#xFFFF;#",
       "#&#xD800;&#xDFFF;&#xFFFE;&#xFFFF;#"},
      {"#&#1114112;&#x110000;&#4294967361;#", "#&amp;#1114112;&amp;#x110000;&amp;#4294967361;#",
       "#&#1114112;&#x110000;&#4294967361;#"},
      {"#&#;&#x;&#xG;&#12a;&#X41;&#-5;&# 5;#",
       "#&amp;#;&amp;#x;&amp;#xG;&amp;#12a;&amp;#X41;&amp;#-5;&amp;# 5;#",
       "#&#;&#x;&#xG;&#12a;&#X41;&#-5;&# 5;#"},
      // Other signs of XML are plain text.
      {"#<b>#", "#&lt;b&gt;#", "#<b>#"},
      {"#</read_list>#", "#&lt;/read_list&gt;#", "#</read_list>#"},
      {"#<!--#,#]]>#", "#&lt;!--#,#]]&gt;#", "#<!--#,#]]>#"},
      {"#<![CDATA[x]]>#", "#&lt;![CDATA[x]]&gt;#", "#<![CDATA[x]]>#"},
      {"#a\"b'c#", "#a\"b'c#", "#a\"b'c#"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.list);
    const smb_share &share = read_back(on_disk("Music").read(row.list).write(row.list).deny(row.list));
    EXPECT_EQ(stored_text("read_list"), row.in_the_file);
    EXPECT_EQ(stored_text("write_list"), row.in_the_file);
    EXPECT_STREQ(share.read_list, row.read);
    EXPECT_STREQ(share.write_list, row.read);
    EXPECT_EQ(share.invalid_users, std::string("#nobody#,") + row.read);
  }
}

TEST(ShareXmlWriter, AListWithALoneAmpersandDoesNotOpenTheShare) {
  const smb_share &share = read_back(on_disk("Music").read("#R&D#"));
  EXPECT_STREQ(share.read_list, "#R&D#");
  EXPECT_STREQ(share.write_list, "");
  EXPECT_STREQ(share.invalid_users, "#nobody#");
  EXPECT_STREQ(share.valid_users, "#R&D#");
}

TEST(ShareXmlWriter, AReferenceInASerialIsWhatItStandsFor) {
  Insert_Smb_Node(on_disk("Music").tag(1, "WD&45;1&lt;"));
  write();
  EXPECT_EQ(stored_text("hd_serial"), "WD&amp;45;1&lt;");
}

TEST(ShareXmlWriter, WhatXmlCannotHoldIsReplaced) {
  const std::pair<std::string, std::string> rows[] = {
      {"\x01", replacement},
      {"a\x1F\x08z", "a" + replacement + replacement + "z"},
      {"\x7F", "\x7F"},
      {"M\xFCsik", "M" + replacement + "sik"},
      {"\xC3", replacement},
      {"\xC3\xA4\xC3", "\xC3\xA4" + replacement},
      {"\xE2\x82", replacement + replacement},
      {"\xE2\x82&", replacement + replacement + "&"},
      {"\xC0\xAF", replacement + replacement},
      {"\xE0\x80\xAF", replacement + replacement + replacement},
      {"\xED\xA0\x80", replacement + replacement + replacement},
      {"\xEF\xBF\xBE", replacement + replacement + replacement},
      {"\xEF\xBF\xBF", replacement + replacement + replacement},
      {"\xEF\xBF\xBD", replacement},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
      {"\xF4\x90\x80\x80", replacement + replacement + replacement + replacement},
      {"\xF5\x80\x80\x80", replacement + replacement + replacement + replacement},
      {"\xFE\xFF", replacement + replacement},
      {"\xEF\xBB\xBF", "\xEF\xBB\xBF"},
  };
  for (const auto &[text, kept] : rows) {
    SCOPED_TRACE(kept);
    const smb_share &share = read_back(Share{"Music" + text}
                                           .on_disk("WD-1")
                                           .comment(text)
                                           .path("/mnt/HD/HD_a2/" + text)
                                           .oplocks(text)
                                           .read("#" + text + "#")
                                           .write(text));
    EXPECT_EQ(share.name, "Music" + kept);
    EXPECT_EQ(share.comment, kept);
    EXPECT_EQ(share.path, "/mnt/HD/HD_a2/" + kept);
    EXPECT_EQ(share.read_list, "#" + kept + "#");
    EXPECT_EQ(share.write_list, kept);
  }
}

TEST(ShareXmlWriter, NoByteCostsAShare) {
  const auto field = [](int byte) { return "a" + std::string(1, static_cast<char>(byte)) + "z"; };
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text = field(byte);
    Insert_Smb_Node(Share{"s" + std::to_string(byte) + text}
                        .on_disk("WD-1")
                        .comment(text)
                        .path("/mnt/HD/HD_a2/" + text)
                        .oplocks(text)
                        .map_archive(text)
                        .read("#" + text + "#")
                        .write("#" + text + "#")
                        .deny("#" + text + "#"));
  }
  write_and_read_back();
  ASSERT_EQ(pss->count, 255);
  int byte = 0;
  for (const smb_share *share : nodes_of(smbshare)) {
    SCOPED_TRACE(++byte);
    const bool held = byte == '\t' || byte == '\n' || byte == '\r' || (byte >= 0x20 && byte < 0x80);
    const std::string text = held ? field(byte) : "a" + replacement + "z";
    EXPECT_EQ(share->name, "s" + std::to_string(byte) + text);
    EXPECT_EQ(share->comment, text);
    EXPECT_EQ(share->path, "/mnt/HD/HD_a2/" + text);
    EXPECT_EQ(share->oplocks, text);
    EXPECT_EQ(share->read_list, "#" + text + "#");
    EXPECT_EQ(share->invalid_users, "#nobody#,#" + text + "#");
  }
}

TEST(ShareXmlWriter, NoTextMakesAFileThatCannotBeRead) {
  const char *pieces[] = {"&",    "&amp;", "&#",     ";",        "#",        ",",        "<",
                          ">",    "x",     "&lt;",   "]]>",      "\x01",     "\xC3",     "\xC3\xA4",
                          "\xE2", "\x82",  "&#x41;", "&x;",      "&#xD800;", "\xED\xA0", "#alice#",
                          "#,#",  " ",     "\r",     "\xFF\xFE", "<!--"};
  std::mt19937 random(20);
  const auto text = [&](std::size_t width) {
    std::string result;
    const std::size_t length = random() % 4 == 0 ? width : random() % width;
    while (result.size() < length) {
      result += pieces[random() % std::size(pieces)];
    }
    result.resize(length);
    return result;
  };
  constexpr int shares = 120;
  for (int i = 0; i < shares; ++i) {
    Insert_Smb_Node(Share{std::to_string(i) + ":" + text(500)}
                        .on_disk("WD-1")
                        .comment(text(511))
                        .path("/mnt/HD/HD_a2/" + text(4081))
                        .oplocks(text(7))
                        .read("#" + text(12286))
                        .deny("#" + text(12286)));
  }
  write_and_read_back();
  ASSERT_EQ(pss->count, shares);
  int i = 0;
  for (const smb_share *share : nodes_of(smbshare)) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(std::string(share->name).starts_with(std::to_string(i++) + ":"));
    EXPECT_NE(std::string(share->read_list), "");
    EXPECT_STREQ(share->write_list, "");
    EXPECT_NE(std::string(share->invalid_users), "");
  }
}

TEST(ShareXmlWriter, ANameOfAmpersandsComesBackWhole) {
  const std::string name = repeated("&", 511);
  const smb_share &share = read_back(
      Share{name}.on_disk("WD-1").comment(name).path("/mnt/HD/HD_a2/" + repeated("&", 4081)).oplocks("no"));
  EXPECT_EQ(share.name, name);
  EXPECT_EQ(share.comment, name);
  EXPECT_EQ(share.path, "/mnt/HD/HD_a2/" + repeated("&", 4081));
  EXPECT_STREQ(share.oplocks, "no");
}

TEST(ShareXmlWriter, EscapingInMemoryKeepsTheFieldsApart) {
  const std::string ampersands = repeated("&", 511);
  Insert_Smb_Node(Share{ampersands}
                      .on_disk("WD-1")
                      .comment("x" + repeated("&", 510))
                      .path("/mnt/HD/HD_a2/" + repeated("&", 4081))
                      .oplocks("no"));
  write();
  const smb_share &share = *pss->head;
  EXPECT_STREQ(share.hd_serial, "WD-1");
  EXPECT_EQ(share.name, repeated("&amp;", 102));
  EXPECT_EQ(share.comment, "x" + repeated("&amp;", 102));
  EXPECT_EQ(share.path, "/mnt/HD/HD_a2/" + repeated("&amp;", 816));
  EXPECT_STREQ(share.browseable, "yes");
  EXPECT_STREQ(share.oplocks, "no");
}

TEST(ShareXmlWriter, FullFieldsComeBackWhole) {
  const std::string readers = "#" + std::string(12285, 'r') + "#";
  const std::string denied = "#nobody#,#" + std::string(12276, '&') + "#";
  const smb_share &share = read_back(Share{std::string(511, 'n')}
                                         .on_disk("WD-1")
                                         .comment(repeated("\xC3\xA4", 255))
                                         .path("/mnt/HD/HD_a2/" + std::string(4081, '<'))
                                         .oplocks("1234567")
                                         .map_archive("<<<<<<<")
                                         .read(readers)
                                         .deny(denied));
  EXPECT_EQ(share.name, std::string(511, 'n'));
  EXPECT_EQ(share.comment, repeated("\xC3\xA4", 255));
  EXPECT_EQ(share.path, "/mnt/HD/HD_a2/" + std::string(4081, '<'));
  EXPECT_STREQ(share.oplocks, "1234567");
  EXPECT_STREQ(share.map_archive, "<<<<<<<");
  EXPECT_EQ(share.read_list, readers);
  EXPECT_EQ(share.invalid_users, denied);
}

TEST(ShareXmlWriter, ReplacedBytesThatNoLongerFitAreCutBetweenCharacters) {
  const smb_share &share = read_back(Share{"n" + std::string(510, '\xFF')}
                                         .on_disk("WD-1")
                                         .comment(std::string(511, '\x01'))
                                         .path("/mnt/HD/HD_a2/" + std::string(4081, '\x02'))
                                         .read(std::string(12287, '\xFF')));
  EXPECT_EQ(share.name, "n" + repeated(replacement, 170));
  EXPECT_EQ(share.comment, repeated(replacement, 170));
  EXPECT_EQ(share.path, "/mnt/HD/HD_a2/" + repeated(replacement, 1360));
  EXPECT_EQ(share.read_list, repeated(replacement, 4095));
  EXPECT_STREQ(share.write_list, "");
}

TEST(ShareXmlWriter, ReplacedBytesInALongListCutItBetweenEntries) {
  const std::string entry = "#" + std::string(97, '\xFF') + "#";
  std::string list = entry;
  while (list.size() + 100 <= 12287) {
    list += "," + entry;
  }
  const smb_share &share = read_back(on_disk("Music").read(list));
  const std::string kept = "#" + repeated(replacement, 97) + "#";
  // 41 entries of 293 bytes and their commas make 12053 bytes; a 42nd does not fit.
  EXPECT_EQ(share.read_list, kept + repeated("," + kept, 40));
}

} // namespace
} // namespace nasshare::tests
