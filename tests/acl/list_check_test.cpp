// run_check_samba_list: of an access list the unknown accounts go.
#include "access_lists.h"
#include "accounts.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "nasshare/acl.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string checked(std::string_view text) {
  AccessList list(text);
  run_check_samba_list(list);
  return list.text();
}

TEST(ListCheck, OnlyKnownAccountsStay) {
  const struct {
    const char *list, *kept;
  } rows[] = {
      {"#alice#,#bob#", "#alice#,#bob#"},
      {"#alice#,#dave#,#bob#", "#alice#,#bob#"},
      {"#dave#,#alice#", "#alice#"},
      {"#alice#,#dave#", "#alice#"},
      {"#@staff#,#@sales#", "#@staff#"},
      {"#@alice#,#staff#", ""},
      {"#dave#,#@sales#", ""},
      {"#Alice#", ""},
      {"#bob#,#alice#,#@staff#,#bob#", "#bob#,#alice#,#@staff#,#bob#"},
      {"alice,bob", "#alice#,#bob#"},
      {"#nobody#,#alice#", "#nobody#,#alice#"},
      {"#,#", ""},
      {"#@#", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.list);
    EXPECT_EQ(checked(row.list), row.kept);
  }
}

TEST(ListCheck, AnAccountOfOneLetterStays) {
  Appliance{}.user("a", 600, 600).group("g", 601);
  EXPECT_EQ(checked("#a#"), "#a#");
  EXPECT_EQ(checked("#@g#"), "#@g#");
}

TEST(ListCheck, EmptyEveryoneAndTheGuestAloneAreLeftAlone) {
  Appliance{}.file("/etc/passwd", "").file("/etc/group", "");
  EXPECT_EQ(checked(""), "");
  EXPECT_EQ(checked(everyone), everyone);
  EXPECT_EQ(checked("#nobody#"), "#nobody#");
}

TEST(ListCheck, WithinALongerListTheGuestHasToExist) {
  Appliance{}.file("/etc/passwd", "alice:x:1000:1000::/:/bin/sh\n");
  EXPECT_EQ(checked("#nobody#,#alice#"), "#alice#");
  EXPECT_EQ(checked("#nobody#, #@allaccount#"), "#@allaccount#") << "the blank is a name of its own";
  EXPECT_EQ(checked("#@allaccount#,#nobody#"), "#@allaccount#");
}

TEST(ListCheck, WithoutDatabasesEveryNameIsUnknown) {
  Appliance{}.remove("/etc/passwd").remove("/etc/group");
  EXPECT_EQ(checked("#alice#,#@staff#"), "");
}

TEST(ListCheck, NothingIsNotedOrPrinted) {
  expect_silence([] { checked("#dave#,#alice#"); });
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(ListCheck, AFullListStaysWhole) {
  Appliance{}.file("/etc/passwd", numbered_accounts(entries_of_a_full_list));
  const std::string full = full_list();
  ASSERT_EQ(full.size(), 12287U);
  EXPECT_EQ(checked(full), full);
}

TEST(ListCheck, AListThatGrowsEndsWithAWholeEntry) {
  Appliance{}.user("a", 600, 600);
  const std::string list = "a" + repeated(",a", 6143);
  const std::string grown = "#a#" + repeated(",#a#", 3071);
  ASSERT_EQ(list.size(), 12287U);
  EXPECT_EQ(checked(list), grown);
}

TEST(ListCheck, AnOverlongNameIsUnknown) {
  EXPECT_EQ(checked("#" + std::string(600, 'x') + "#,#alice#,#@" + std::string(5000, 'y') + "#"), "#alice#");
}

TEST(ListCheck, AMissingListIsIgnored) {
  run_check_samba_list(nullptr);
  EXPECT_EQ(checked("#alice#"), "#alice#");
}

} // namespace
} // namespace nasshare::tests
