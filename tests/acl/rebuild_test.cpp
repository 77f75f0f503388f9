// Lists that mean "everyone but these" become explicit lists of local accounts.
#include "access_lists.h"
#include "appliance.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

const std::string all(everyone);

struct Lists {
  std::string read, write, deny;
  bool operator==(const Lists &) const = default;
};

Lists rebuilt(const std::string &read, const std::string &write, const std::string &deny) {
  const Share share = Share{"Music"}.read(read).write(write).deny(deny);
  rebuld_input_data(share);
  return {share.record().read_list, share.record().write_list, share.record().invalid_users};
}

std::string others(const std::vector<std::string> &names, std::string_view old = "#old#") {
  for (const std::string &name : names) {
    Insert_Name_Node(name.c_str());
  }
  AccessList list(old);
  EXPECT_EQ(rebuild_user_list_except_input(list), static_cast<char *>(list));
  return list.text();
}

// ---- All accounts but some

TEST(OtherAccounts, AreThoseOfThePasswordDatabaseInItsOrder) {
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
}

TEST(OtherAccounts, AreNotThoseOfTheNameList) {
  EXPECT_EQ(others({"bob", "@carol", "Alice", "dave"}), "#alice#,#carol#");
}

TEST(OtherAccounts, NeverNameTheSystemsOwn) {
  Appliance appliance;
  for (const char *name : {"ftp", "admin", "sshd", "squeezecenter", "ftp2", "daemon"}) {
    appliance.user(name, 700, 700);
  }
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#,#ftp2#,#daemon#");
}

TEST(OtherAccounts, MayBeNone) {
  EXPECT_EQ(others({"alice", "bob", "carol"}), "");
  Appliance{}.remove("/etc/passwd");
  EXPECT_EQ(others({}), "");
}

TEST(OtherAccounts, LeaveTheNameListAsItIs) {
  EXPECT_EQ(others({"bob"}), "#alice#,#carol#");
  EXPECT_EQ(listed_names(), std::vector<std::string>{"bob"});
}

TEST(OtherAccounts, AreReadFromTheStartEveryTime) {
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
  EXPECT_EQ(others({}), "#alice#,#bob#,#carol#");
}

TEST(OtherAccounts, ArePrintedWhenTheDebugFlagIsOne) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { others({"bob"}, "#old#,#%s#"); }),
              flag == 1 ? "$$$list[#old#,#%s#]\n$$$[#alice#,#carol#]\n" : "");
  }
}

TEST(OtherAccounts, ThatDoNotFitAreLeftOutWhole) {
  std::string passwd;
  for (int i = 0; i < 2000; ++i) {
    char line[64];
    std::snprintf(line, sizeof line, "u%04d:x:%d:500::/:/bin/sh\n", i, 2000 + i);
    passwd += line;
  }
  Appliance{}.file("/etc/passwd", passwd);
  EXPECT_EQ(others({}), numbered_entries(1536));
}

TEST(OtherAccounts, OfNoListAreNone) {
  EXPECT_EQ(rebuild_user_list_except_input(nullptr), nullptr);
}

// ---- A record that comes in

TEST(InputRecord, EveryoneMayWriteButReaders) {
  EXPECT_EQ(rebuilt("#alice#", all, ""), (Lists{"#alice#", "#bob#,#carol#", ""}));
}

TEST(InputRecord, EveryoneMayWriteButTheDenied) {
  EXPECT_EQ(rebuilt("", all, "#bob#"), (Lists{"", "#alice#,#carol#", "#bob#"}));
}

TEST(InputRecord, EveryoneMayWriteButReadersAndTheDenied) {
  EXPECT_EQ(rebuilt("#alice#", all, "#bob#"), (Lists{"#alice#", "#carol#", "#bob#"}));
}

TEST(InputRecord, EveryoneIsDeniedButReadersAndWriters) {
  EXPECT_EQ(rebuilt("#alice#", "", all), (Lists{"#alice#", "", "#bob#,#carol#"}));
  EXPECT_EQ(rebuilt("", "#bob#", all), (Lists{"", "#bob#", "#alice#,#carol#"}));
  EXPECT_EQ(rebuilt("#alice#", "#bob#", all), (Lists{"#alice#", "#bob#", "#carol#"}));
}

TEST(InputRecord, GroupsStandForTheirMembers) {
  EXPECT_EQ(rebuilt("#@staff#", all, ""), (Lists{"#@staff#", "#carol#", ""}));
  EXPECT_EQ(rebuilt("", "#@staff#", all), (Lists{"", "#@staff#", "#carol#"}));
  EXPECT_EQ(rebuilt("#@unknown#", all, ""), (Lists{"#@unknown#", "#alice#,#bob#,#carol#", ""}));
}

TEST(InputRecord, EveryoneAsReaderLeavesNoWriter) {
  EXPECT_EQ(rebuilt(all, all, ""), (Lists{all, "", ""}));
}

TEST(InputRecord, OtherRecordsStayAsTheyAre) {
  const Lists records[] = {
      {"", "", ""},           {"#alice#", "", ""}, {"#alice#", "#bob#", "#carol#"},
      {all, "#bob#", ""},     {"", all, ""},       {"", "", all},
      {"#alice#", all, all},  {"", all, all},      {"#alice#", "#nobody#, #@allaccount#", "#bob#"},
      {"", "#nobody#", "#a#"}};
  for (const Lists &record : records) {
    SCOPED_TRACE(record.read + " | " + record.write + " | " + record.deny);
    EXPECT_EQ(rebuilt(record.read, record.write, record.deny), record);
  }
}

TEST(InputRecord, TheNameListIsEmptyAfterwards) {
  EXPECT_EQ(rebuilt("#alice#", all, "").write, "#bob#,#carol#");
  EXPECT_EQ(Is_Name_Empty(), 1);
  EXPECT_EQ(rebuilt("#carol#", "", all).deny, "#alice#,#bob#");
}

TEST(InputRecord, ValidUsersAreNotTouched) {
  const Share share = Share{"Music"}.read("#alice#").write(all).valid("#old#");
  rebuld_input_data(share);
  EXPECT_STREQ(share.record().valid_users, "#old#");
}

TEST(InputRecord, AMissingRecordIsIgnored) {
  rebuld_input_data(nullptr);
  EXPECT_EQ(Is_Name_Empty(), 1);
}

TEST(InputRecord, SaysWhatItDoesWhenTheDebugFlagIsSet) {
  const struct {
    Lists record;
    const char *listing, *trace;
  } rows[] = {
      {{"#alice#", all, ""},
       "run rebuld_input_data! [1][0]\n",
       "$$$list[#nobody#,#@allaccount#]\n$$$[#bob#,#carol#]\n"},
      {{"", "#bob#", all},
       "run rebuld_input_data! [0][1]\n",
       "$$$list[#nobody#,#@allaccount#]\n$$$[#alice#,#carol#]\n"},
      {{"#alice#", "#bob#", ""}, "rebuld_input_data return!!\n", ""},
      {{"", all, ""}, "rebuld_input_data return!!\n", ""},
      {{"", "", all}, "rebuld_input_data return!!\n", ""},
      {{"#alice#", all, all}, "", ""},
  };
  for (const auto &row : rows) {
    for (const int flag : {0, 1, 2}) {
      SCOPED_TRACE(std::string(row.listing) + std::to_string(flag));
      smb_dbg_flag = flag;
      const std::string listing = flag == 0 ? "" : row.listing;
      const std::string trace = flag == 1 ? row.trace : "";
      EXPECT_EQ(output_of([&row] { rebuilt(row.record.read, row.record.write, row.record.deny); }),
                listing + trace);
    }
  }
}

} // namespace
} // namespace nasshare::tests
