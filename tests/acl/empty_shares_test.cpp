// remove_empty_share_node: shares without any list go.
#include "listed.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

TEST(EmptyShares, AreThoseWithoutReadersAndWritersThatDenyNobodyButTheGuest) {
  const struct {
    const char *read, *write, *deny;
    bool stays;
  } rows[] = {
      {"", "", "", false},
      {"", "", "#nobody#", false},
      {"", "", "#nobody#,#alice#", true},
      {"", "", "#alice#", true},
      {"#alice#", "", "", true},
      {"", "#alice#", "", true},
      {"#alice#", "", "#nobody#", true},
      {"", "", "#nobody#,#@allaccount#", true},
      {"", "", "nobody", true},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.read) + " | " + row.write + " | " + row.deny);
    Free_All_List();
    list_share("Music", {row.read, row.write, row.deny});
    remove_empty_share_node();
    EXPECT_EQ(listed_shares(), row.stays ? Names{"Music"} : Names{});
  }
}

TEST(EmptyShares, AllGoWhereverTheyStand) {
  list_share("A", {"", "", ""});
  list_share("B", {"", "", "#nobody#"});
  list_share("C", {"#alice#", "", ""});
  list_share("D", {"", "", ""});
  list_share("E", {"", "#alice#", ""});
  list_share("F", {"", "", ""});
  remove_empty_share_node();
  EXPECT_EQ(listed_shares(), (Names{"C", "E"}));
  EXPECT_EQ(pss->count, 2);
  EXPECT_STREQ(pss->tail->name, "E");
}

TEST(EmptyShares, GoInADomainToo) {
  pss->ads_enable = 1;
  list_share("A", {"", "", "#nobody#"});
  remove_empty_share_node();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(EmptyShares, NothingHappensInAnEmptyCatalogue) {
  remove_empty_share_node();
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

} // namespace
} // namespace nasshare::tests
