// The configuration database: values, odd keys and values, and a file that is replaced whole or not at all.
#include "appliance.h"
#include "nasshare/platform.h"
#include "output.h"
#include "paths.h"
#include "text.h"
#include "unopenable.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace nasshare::tests {
namespace {

constexpr const char *folder = "/etc/NAS_CFG";
constexpr const char *workgroup = "/system_mgr/samba/workgroup";

std::string value(const char *key, std::size_t width = 512) {
  std::vector<char> field(width, 'x');
  xml_get_str(key, static_cast<int>(width), field.data());
  return field.data();
}

std::string stored_and_read(const std::string &text) {
  xml_set_str(workgroup, text.c_str());
  return value(workgroup, text.size() + 1);
}

void write_database(const std::string &text) {
  Appliance{}.file(config_database, text);
}

int number(const std::string &text) {
  write_database("<config><hw_ver>" + text + "</hw_ver></config>");
  return xml_get_int("/hw_ver");
}

// ---- Reading

TEST(ConfigDatabase, AValueIsTheTextOfTheElementThatTheKeyPathNames) {
  write_database("<config><system_mgr><samba><workgroup>HOME</workgroup></samba></system_mgr></config>");
  EXPECT_EQ(value(workgroup), "HOME");
}

TEST(ConfigDatabase, AnAbsentKeyIsEmptyAndZero) {
  write_database("<config><system_mgr/></config>");
  EXPECT_EQ(value(workgroup), "");
  EXPECT_EQ(xml_get_int(workgroup), 0);
}

TEST(ConfigDatabase, WithoutAFileEveryKeyIsAbsent) {
  EXPECT_EQ(value(workgroup), "");
  EXPECT_EQ(xml_get_int(workgroup), 0);
}

TEST(ConfigDatabase, TheFirstElementOfANameCounts) {
  write_database("<config><hw_ver>1</hw_ver><hw_ver>2</hw_ver></config>");
  EXPECT_EQ(value("/hw_ver"), "1");
}

TEST(ConfigDatabase, CommentsAndCdataAreReadAsXmlMeansThem) {
  write_database("<config><!-- <hw_ver>no</hw_ver> --><hw_ver>A<!-- x --><![CDATA[<B>]]></hw_ver></config>");
  EXPECT_EQ(value("/hw_ver"), "A<B>");
}

TEST(ConfigDatabase, AnElementWithChildrenHasNoBlankValue) {
  write_database("<config>\n  <afp>\n    <enable>1</enable>\n  </afp>\n</config>");
  EXPECT_EQ(value("/afp"), "");
}

TEST(ConfigDatabase, BlanksAreAValueWhereNoChildrenAre) {
  EXPECT_EQ(stored_and_read("  "), "  ");
  EXPECT_EQ(stored_and_read("\n"), "\n");
}

TEST(ConfigDatabase, ANumberIsDecimal) {
  EXPECT_EQ(number("1"), 1);
  EXPECT_EQ(number("-17"), -17);
  EXPECT_EQ(number("0010"), 10);
  EXPECT_EQ(number("\n  1\n"), 1);
}

TEST(ConfigDatabase, WhatIsNoNumberIsZero) {
  EXPECT_EQ(number(""), 0);
  EXPECT_EQ(number("yes"), 0);
  EXPECT_EQ(number("1x"), 0);
  EXPECT_EQ(number("0x10"), 0);
  EXPECT_EQ(number("1 1"), 0);
  EXPECT_EQ(number("-"), 0);
}

TEST(ConfigDatabase, ANumberBeyondAnIntSaturates) {
  EXPECT_EQ(number("2147483647"), INT_MAX);
  EXPECT_EQ(number("99999999999"), INT_MAX);
  EXPECT_EQ(number("-99999999999"), INT_MIN);
  EXPECT_EQ(number(std::string(400, '9')), INT_MAX);
  EXPECT_EQ(number("99999999999x"), 0);
}

TEST(ConfigDatabase, AValueIsBoundedAndTerminated) {
  write_database("<config><hw_ver>abcdef</hw_ver></config>");
  EXPECT_EQ(value("/hw_ver", 7), "abcdef");
  EXPECT_EQ(value("/hw_ver", 4), "abc");
  EXPECT_EQ(value("/hw_ver", 1), "");
}

TEST(ConfigDatabase, AValueIsCutOnAWholeCharacter) {
  write_database("<config><hw_ver>a\u00fc\u20ac\U0001f600</hw_ver></config>");
  EXPECT_EQ(value("/hw_ver", 3), "a");
  EXPECT_EQ(value("/hw_ver", 4), "a\u00fc");
  EXPECT_EQ(value("/hw_ver", 6), "a\u00fc");
  EXPECT_EQ(value("/hw_ver", 10), "a\u00fc\u20ac");
  EXPECT_EQ(value("/hw_ver", 11), "a\u00fc\u20ac\U0001f600");
}

TEST(ConfigDatabase, NoByteBehindTheBoundIsTouched) {
  write_database("<config><hw_ver>abcdef</hw_ver></config>");
  char field[] = "0123456789";
  xml_get_str("/hw_ver", 4, field);
  EXPECT_EQ(std::string(field, 10), std::string("abc\0", 4) + "456789");
}

TEST(ConfigDatabase, NoRoomMeansNothingIsWritten) {
  write_database("<config><hw_ver>abc</hw_ver></config>");
  char field[] = "kept";
  xml_get_str("/hw_ver", 0, field);
  xml_get_str("/hw_ver", -1, field);
  EXPECT_STREQ(field, "kept");
}

TEST(ConfigDatabase, MissingArgumentsAreAbsentValues) {
  write_database("<config><hw_ver>7</hw_ver></config>");
  char field[] = "old";
  xml_get_str(nullptr, sizeof field, field);
  EXPECT_STREQ(field, "");
  xml_get_str("/hw_ver", 16, nullptr);
  EXPECT_EQ(xml_get_int(nullptr), 0);
  xml_set_str(nullptr, "x");
  xml_set_str("/hw_ver", nullptr);
  EXPECT_EQ(xml_get_int("/hw_ver"), 7);
}

// Everybody may open the folder, and so lock it.
TEST(ConfigDatabase, AFolderThatSomebodyLocksIsNotInTheWay) {
  write_database("<config/>");
  const int locked = open(folder, O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(flock(locked, LOCK_EX), 0);
  alarm(20);
  xml_set_str("/hw_ver", "7");
  EXPECT_EQ(xml_get_int("/hw_ver"), 7);
  close(locked);
}

TEST(ConfigDatabase, WhatKeepsAValueFromBeingReadIsInErrno) {
  write_database("<config><system_mgr><samba><ads_enable>1</ads_enable></samba></system_mgr></config>");
  const DescriptorLimit limit(0);
  errno = 0;
  EXPECT_EQ(xml_get_int("/system_mgr/samba/ads_enable"), 0);
  EXPECT_EQ(errno, EMFILE);
  errno = 0;
  EXPECT_EQ(value(workgroup), "");
  EXPECT_EQ(errno, EMFILE);
}

TEST(ConfigDatabase, ErrnoStaysAsItWasWhenTheDatabaseIsRead) {
  for (const char *text : {"<config><hw_ver>7</hw_ver></config>", "<config/>", "<config>broken"}) {
    write_database(text);
    errno = EDOM;
    xml_get_int("/hw_ver");
    EXPECT_EQ(errno, EDOM) << text;
    value("/hw_ver");
    EXPECT_EQ(errno, EDOM) << text;
  }
  Appliance{}.remove(config_database);
  errno = EDOM;
  xml_get_int("/hw_ver");
  EXPECT_EQ(errno, EDOM) << "no database";
}

// ---- Keys

TEST(ConfigDatabase, AKeyThatIsNoPathOfNamesIsNeverThere) {
  write_database("<config>7<a>8</a></config>");
  for (const char *key : {"", "/", "a", "//a", "/a/", "/1", "/a b", "/x:a", "/<a>", "/a[1]", "/\xff"}) {
    EXPECT_EQ(value(key), "") << key;
    EXPECT_EQ(xml_get_int(key), 0) << key;
  }
}

TEST(ConfigDatabase, AKeyThatIsNoPathOfNamesStoresNothing) {
  const std::string before = "<config>7<a>8</a></config>";
  write_database(before);
  for (const char *key : {"", "/", "a", "//a", "/a/", "/1", "/a b", "/x:a", "/<a>", "/a[1]", "/\xff"}) {
    xml_set_str(key, "new");
    EXPECT_EQ(read_file(config_database), before) << key;
  }
}

TEST(ConfigDatabase, AKeyDeeperThanTheParserGoesStoresNothing) {
  xml_set_str("/hw_ver", "1");
  const std::string before = read_file(config_database);
  const std::string key = repeated("/a", 300);
  xml_set_str(key.c_str(), "x");
  EXPECT_EQ(read_file(config_database), before);
  EXPECT_EQ(xml_get_int("/hw_ver"), 1);
}

TEST(ConfigDatabase, AVeryLongKeyIsAnOrdinaryKey) {
  const std::string key = "/" + std::string(30000, 'k');
  xml_set_str(key.c_str(), "1");
  EXPECT_EQ(xml_get_int(key.c_str()), 1);
}

// ---- Storing

TEST(ConfigDatabase, TheFirstValueMakesFolderFileAndElements) {
  Appliance{}.remove(folder);
  xml_set_str(workgroup, "HOME");
  EXPECT_EQ(read_file(config_database),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<config>\n  <system_mgr>\n    <samba>\n      <workgroup>HOME</workgroup>\n"
            "    </samba>\n  </system_mgr>\n</config>\n");
}

TEST(ConfigDatabase, ANewFileIsItsOwnersAlone) {
  xml_set_str("/system_mgr/samba/ads_password", "secret");
  EXPECT_EQ(mode(config_database), 0600U);
}

TEST(ConfigDatabase, OtherValuesStay) {
  write_database(
      "<config><hw_ver>A</hw_ver><system_mgr><samba><dfs_enable>1</dfs_enable></samba></system_mgr>"
      "</config>");
  xml_set_str(workgroup, "HOME");
  EXPECT_EQ(value(workgroup), "HOME");
  EXPECT_EQ(value("/hw_ver"), "A");
  EXPECT_EQ(xml_get_int("/system_mgr/samba/dfs_enable"), 1);
}

TEST(ConfigDatabase, AValueIsReplacedAndCanBeEmpty) {
  EXPECT_EQ(stored_and_read("one"), "one");
  EXPECT_EQ(stored_and_read("two"), "two");
  EXPECT_EQ(stored_and_read(""), "");
  EXPECT_NE(read_file(config_database).find("<workgroup/>"), std::string::npos);
}

TEST(ConfigDatabase, AnEmptyValueOfAnAbsentKeyIsStored) {
  xml_set_str("/system_mgr/samba/server_string", "");
  EXPECT_NE(read_file(config_database).find("<server_string/>"), std::string::npos);
}

TEST(ConfigDatabase, AValueAboveOtherKeysLeavesThem) {
  xml_set_str("/afp/enable", "1");
  xml_set_str("/afp", "text");
  EXPECT_EQ(value("/afp"), "text");
  EXPECT_EQ(xml_get_int("/afp/enable"), 1);
}

TEST(ConfigDatabase, AnyTextThatXmlCanHoldComesBackAsItWas) {
  for (const std::string text :
       {"R&D", "&amp;", "&#65;", "&x;", "<b>\"it's\"</b>", "]]>", "a\tb\nc", "line\r\nend\r", " around ",
        "tab\t", "\u00fc\u20ac\U0001f600", "#nobody#,#@allaccount#", "<!-- no -->", "\u0085\u2028"}) {
    EXPECT_EQ(stored_and_read(text), text);
  }
}

TEST(ConfigDatabase, ALongValueComesBackWhole) {
  const std::string text(200000, '&');
  EXPECT_TRUE(stored_and_read(text) == text);
}

// How much the XML reader takes is its own business.
TEST(ConfigDatabase, AnEnormousValueIsStoredWholeOrNotAtAll) {
  for (const char character : {'x', '&'}) {
    xml_set_str(workgroup, "old");
    const std::string text(11000000, character);
    const std::string after = stored_and_read(text);
    EXPECT_TRUE(after == text || after == "old") << after.size();
  }
}

TEST(ConfigDatabase, ATextThatXmlCannotHoldLeavesTheOldValue) {
  xml_set_str(workgroup, "old");
  const std::string before = read_file(config_database);
  for (const char *text : {"\x01", "a\x1b[0m", "\x7f\x08", "\xff", "\xc3", "\xc3(", "\xc0\x80",
                           "\xed\xa0\x80", "\xef\xbf\xbe", "\xf5\x80\x80\x80", "end\xe2\x82"}) {
    const Captured captured;
    xml_set_str(workgroup, text);
    EXPECT_EQ(read_file(config_database), before);
  }
}

// ---- Replacing the file

TEST(ConfigDatabase, AChangeReplacesTheFileInsteadOfWritingIntoIt) {
  xml_set_str(workgroup, "one");
  const ino_t before = inode(config_database);
  const int reader = open(config_database, O_RDONLY | O_CLOEXEC);
  xml_set_str(workgroup, "two");
  EXPECT_NE(inode(config_database), before);
  char text[512] = {};
  EXPECT_GT(read(reader, text, sizeof text - 1), 0);
  EXPECT_NE(std::string(text).find("<workgroup>one</workgroup>"), std::string::npos);
  close(reader);
}

TEST(ConfigDatabase, AnUnchangedValueWritesNothing) {
  xml_set_str(workgroup, "one");
  const ino_t before = inode(config_database);
  xml_set_str(workgroup, "one");
  EXPECT_EQ(inode(config_database), before);
}

TEST(ConfigDatabase, TheFileKeepsItsModeAndOwner) {
  write_database("<config/>");
  ASSERT_EQ(chmod(config_database, 0640), 0);
  ASSERT_EQ(chown(config_database, 1000, 500), 0);
  xml_set_str(workgroup, "HOME");
  EXPECT_EQ(value(workgroup), "HOME");
  EXPECT_EQ(mode(config_database), 0640U);
  EXPECT_EQ(owner(config_database), 1000U);
}

TEST(ConfigDatabase, NothingIsLeftBesideTheFile) {
  xml_set_str(workgroup, "HOME");
  EXPECT_EQ(names_in(folder), Names{"config.xml"});
}

TEST(ConfigDatabase, WhatAPowerCutLeftBesideTheFileIsNoHindrance) {
  Appliance{}.file("/etc/NAS_CFG/config.xml.new", "<config><half");
  EXPECT_EQ(stored_and_read("HOME"), "HOME");
  EXPECT_EQ(names_in(folder), Names{"config.xml"});
}

TEST(ConfigDatabase, OnAFullDiskTheOldFileStands) {
  ASSERT_EQ(mount("tmpfs", folder, "tmpfs", 0, "size=16k"), 0);
  xml_set_str(workgroup, "old");
  const std::string before = read_file(config_database);
  const std::string text(100000, 'x');
  xml_set_str(workgroup, text.c_str());
  EXPECT_EQ(read_file(config_database), before);
  EXPECT_EQ(names_in(folder), Names{"config.xml"});
}

TEST(ConfigDatabase, OnAReadOnlyDiskTheOldFileStands) {
  ASSERT_EQ(mount("tmpfs", folder, "tmpfs", 0, ""), 0);
  xml_set_str(workgroup, "old");
  ASSERT_EQ(mount(nullptr, folder, "", MS_REMOUNT | MS_RDONLY, nullptr), 0);
  xml_set_str(workgroup, "new");
  EXPECT_EQ(value(workgroup), "old");
}

TEST(ConfigDatabase, TwoProgramsThatStoreAtOnceLoseNothing) {
  constexpr int programs = 4;
  constexpr int values = 25;
  for (int program = 0; program < programs; ++program) {
    if (fork() == 0) {
      for (int i = 0; i < values; ++i) {
        const std::string key = "/p" + std::to_string(program) + "/v" + std::to_string(i);
        xml_set_str(key.c_str(), "1");
      }
      _exit(0);
    }
  }
  for (int program = 0; program < programs; ++program) {
    int status = -1;
    ASSERT_GT(wait(&status), 0);
    ASSERT_EQ(status, 0);
  }
  for (int program = 0; program < programs; ++program) {
    for (int i = 0; i < values; ++i) {
      const std::string key = "/p" + std::to_string(program) + "/v" + std::to_string(i);
      EXPECT_EQ(xml_get_int(key.c_str()), 1) << key;
    }
  }
}

// ---- A broken file

class BrokenDatabase : public testing::TestWithParam<const char *> {};

TEST_P(BrokenDatabase, EveryKeyIsAbsentWithoutAWord) {
  write_database(GetParam());
  Captured captured;
  EXPECT_EQ(value("/a"), "");
  EXPECT_EQ(xml_get_int("/a"), 0);
  EXPECT_EQ(captured.err(), "");
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(read_file(config_database), GetParam());
}

TEST_P(BrokenDatabase, AChangeKeepsItAsideAndBeginsANewOne) {
  write_database(GetParam());
  Captured captured;
  xml_set_str("/a", "new");
  EXPECT_EQ(captured.err(), "");
  EXPECT_EQ(captured.out(), "");
  EXPECT_EQ(value("/a"), "new");
  EXPECT_EQ(read_file("/etc/NAS_CFG/config.xml.bad"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Files, BrokenDatabase,
                         testing::Values("<config><a>1</a>", "<config><a>1</b></config>", "no XML at all",
                                         "<other><a>1</a></other>", "<config><a>\xff</a></config>",
                                         "<config><a>\x01</a></config>", "<config><a>&x;</a></config>",
                                         "<config><a>1</a></config><config/>"));

TEST(ConfigDatabase, AnEmptyFileIsAnEmptyDatabase) {
  write_database("");
  EXPECT_EQ(value(workgroup), "");
  EXPECT_EQ(stored_and_read("HOME"), "HOME");
  EXPECT_FALSE(exists("/etc/NAS_CFG/config.xml.bad"));
}

TEST(ConfigDatabase, AFolderInPlaceOfTheFileIsLeftAlone) {
  Appliance{}.folder(config_database);
  EXPECT_EQ(stored_and_read("HOME"), "");
  EXPECT_EQ(names_in(folder), Names{"config.xml"});
}

TEST(ConfigDatabase, NoFileIsFetchedThatTheDatabaseNames) {
  Appliance{}.file("/tmp/secret", "stolen");
  write_database(
      "<!DOCTYPE config [<!ENTITY x SYSTEM \"file:///tmp/secret\">]><config><a>[&x;]</a></config>");
  EXPECT_EQ(value("/a"), "[]");
}

} // namespace
} // namespace nasshare::tests
