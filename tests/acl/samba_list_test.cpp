// convert_list: an access list as the value of an smb.conf option.
#include "access_lists.h"
#include "appliance.h"
#include "fields.h"
#include "nasshare/acl.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string converted(std::string_view text) {
  AccessList list(text);
  convert_list(list);
  return list.text();
}

void join(std::string_view workgroup) {
  pss->ads_enable = 1;
  put(pss->ads_workgroup, workgroup);
}

std::string entries(const std::string &entry, std::size_t count) {
  return entry + repeated("," + entry, count - 1);
}

TEST(SambaList, LocalEntriesAreQuoted) {
  const struct {
    const char *list, *value;
  } rows[] = {
      {"#a#,#@g#", R"("a","@g")"},
      {"#alice#,#@staff#", R"("alice","@staff")"},
      {"#nobody#,#@allaccount#", R"("nobody","@allaccount")"},
      {"#no such account#,#@none#", R"("no such account","@none")"},
      {"#R&D#", R"("R&D")"},
      {"#", "\""},
      {"a#b,c", "a\"b,c"},
      {"alice", "alice"},
      {"##,,", "\"\",,"},
      {"", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.list);
    EXPECT_EQ(converted(row.list), row.value);
  }
}

TEST(SambaList, EveryModeButOneIsLocal) {
  for (const int mode : {0, 2, -1}) {
    pss->ads_enable = mode;
    EXPECT_EQ(converted("#unknown#"), "\"unknown\"");
  }
}

TEST(SambaList, AFullLocalListStaysWhole) {
  const std::string list = full_list();
  std::string value = list;
  std::ranges::replace(value, '#', '"');
  EXPECT_EQ(value.size(), 12287U);
  EXPECT_EQ(converted(list), value);
}

TEST(SambaList, DomainEntriesCarryTheDomain) {
  join("CORP");
  EXPECT_EQ(converted("#nobody#,#alice#,#@allaccount#"), R"("nobody","CORP+alice","+CORP+Domain Users")");
  EXPECT_EQ(converted("#@staff#,#bob#"), R"("+CORP+staff","CORP+bob")");
}

TEST(SambaList, DomainNamesMayHoldBlanksAndOtherLetters) {
  Appliance{}.group("Domain Users", 10001).user("john doe", 10002, 10001).user("ren\u00e9", 10003, 10001);
  join("CORP");
  EXPECT_EQ(converted("#@Domain Users#,#john doe#,#ren\u00e9#"),
            "\"+CORP+Domain Users\",\"CORP+john doe\",\"CORP+ren\u00e9\"");
}

TEST(SambaList, UnknownDomainAccountsAreDropped) {
  join("CORP");
  EXPECT_EQ(converted("#dave#"), "");
  EXPECT_EQ(converted("#@sales#"), "");
  EXPECT_EQ(converted("#dave#,#alice#,#@sales#,#@staff#,#eve#"), R"("CORP+alice","+CORP+staff")");
  EXPECT_EQ(converted("#alice#,#dave#"), "\"CORP+alice\"");
}

TEST(SambaList, AUserIsNoGroupAndAGroupNoUser) {
  join("CORP");
  EXPECT_EQ(converted("#@alice#,#staff#"), "");
}

TEST(SambaList, TheGuestAndTheGroupOfAllHaveToExistLikeAnyOther) {
  Appliance{}.file("/etc/passwd", "root:x:0:0::/:/bin/sh\n").file("/etc/group", "root:x:0:\n");
  join("CORP");
  EXPECT_EQ(converted("#nobody#,#@allaccount#"), "");
}

TEST(SambaList, OnlyTheUserNobodyAndTheGroupAllaccountAreSpecial) {
  Appliance{}.group("nobody", 600).user("allaccount", 601, 600).user("nobodyx", 602, 600);
  join("CORP");
  EXPECT_EQ(converted("#@nobody#,#allaccount#,#nobodyx#"),
            R"("+CORP+nobody","CORP+allaccount","CORP+nobodyx")");
}

TEST(SambaList, AnEmptyDomainNameLeavesTheSeparator) {
  Appliance{}.user("a", 600, 600);
  join("");
  EXPECT_EQ(converted("#a#"), "\"+a\"");
  EXPECT_EQ(converted("#@staff#"), "\"++staff\"");
}

TEST(SambaList, AListOfDelimitersOnlyIsEmptyInADomain) {
  join("CORP");
  EXPECT_EQ(converted("#,#"), "");
  EXPECT_EQ(converted("#@#"), "");
  EXPECT_EQ(converted(""), "");
}

TEST(SambaList, ADomainListThatGrowsEndsWithAWholeEntry) {
  Appliance{}.user("a", 600, 600);
  join("CORP");
  // Entries of 4 bytes, comma included, become entries of 9; 12287 bytes hold 1365 of them.
  EXPECT_EQ(converted(entries("#a#", 3072)), entries("\"CORP+a\"", 1365));
}

TEST(SambaList, ALongDomainNameKeepsTheListInItsField) {
  Appliance{}.user("a", 600, 600);
  join(std::string(511, 'W'));
  EXPECT_EQ(converted(entries("#a#", 100)), entries("\"" + std::string(511, 'W') + "+a\"", 23));
}

TEST(SambaList, AListThatGrowsLeavesItsNeighboursIntact) {
  Appliance{}.user("a", 600, 600);
  join("CORP");
  const auto share = std::make_unique<smb_share>();
  put(share->map_archive, "yes");
  put(share->read_list, entries("#a#", 3072));
  put(share->write_list, "#alice#");
  convert_list(share->read_list);
  EXPECT_STREQ(share->map_archive, "yes");
  EXPECT_EQ(share->read_list, entries("\"CORP+a\"", 1365));
  EXPECT_STREQ(share->write_list, "#alice#");
}

TEST(SambaList, AnOverlongNameIsNoAccount) {
  join("CORP");
  EXPECT_EQ(converted("#" + std::string(12285, 'x') + "#"), "");
  EXPECT_EQ(converted("#@" + std::string(600, 'x') + "#,#alice#"), "\"CORP+alice\"");
}

TEST(SambaList, AMissingListIsIgnored) {
  convert_list(nullptr);
  join("CORP");
  convert_list(nullptr);
  EXPECT_EQ(converted("#alice#"), "\"CORP+alice\"");
}

} // namespace
} // namespace nasshare::tests
