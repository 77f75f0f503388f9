// rebuld_input_data: lists of a record that mean "everyone but these" become lists of local accounts.
#include "access_lists.h"
#include "debug_output.h"
#include "listed.h"
#include "nasshare/acl.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

Lists rebuilt(const std::string &read, const std::string &write, const std::string &deny) {
  const Share share = Share{"Music"}.read(read).write(write).deny(deny);
  rebuld_input_data(share);
  return lists_of(share.record());
}

TEST(InputRecord, EveryoneMayWriteButReaders) {
  EXPECT_EQ(rebuilt("#alice#", everyone, ""), (Lists{"#alice#", "#bob#,#carol#", ""}));
}

TEST(InputRecord, EveryoneMayWriteButTheDenied) {
  EXPECT_EQ(rebuilt("", everyone, "#bob#"), (Lists{"", "#alice#,#carol#", "#bob#"}));
}

TEST(InputRecord, EveryoneMayWriteButReadersAndTheDenied) {
  EXPECT_EQ(rebuilt("#alice#", everyone, "#bob#"), (Lists{"#alice#", "#carol#", "#bob#"}));
}

TEST(InputRecord, EveryoneIsDeniedButReadersAndWriters) {
  EXPECT_EQ(rebuilt("#alice#", "", everyone), (Lists{"#alice#", "", "#bob#,#carol#"}));
  EXPECT_EQ(rebuilt("", "#bob#", everyone), (Lists{"", "#bob#", "#alice#,#carol#"}));
  EXPECT_EQ(rebuilt("#alice#", "#bob#", everyone), (Lists{"#alice#", "#bob#", "#carol#"}));
}

TEST(InputRecord, GroupsStandForTheirMembers) {
  EXPECT_EQ(rebuilt("#@staff#", everyone, ""), (Lists{"#@staff#", "#carol#", ""}));
  EXPECT_EQ(rebuilt("", "#@staff#", everyone), (Lists{"", "#@staff#", "#carol#"}));
  EXPECT_EQ(rebuilt("#@unknown#", everyone, ""), (Lists{"#@unknown#", "#alice#,#bob#,#carol#", ""}));
}

TEST(InputRecord, EveryoneAsReaderLeavesNoWriter) {
  EXPECT_EQ(rebuilt(everyone, everyone, ""), (Lists{everyone, "", ""}));
}

TEST(InputRecord, OtherRecordsStayAsTheyAre) {
  const Lists records[] = {{"", "", ""},
                           {"#alice#", "", ""},
                           {"#alice#", "#bob#", "#carol#"},
                           {everyone, "#bob#", ""},
                           {"", everyone, ""},
                           {"", "", everyone},
                           {"#alice#", everyone, everyone},
                           {"", everyone, everyone},
                           {"#alice#", "#nobody#, #@allaccount#", "#bob#"},
                           {"", "#nobody#", "#a#"}};
  for (const Lists &record : records) {
    SCOPED_TRACE(record.read + " | " + record.write + " | " + record.deny);
    EXPECT_EQ(rebuilt(record.read, record.write, record.deny), record);
  }
}

TEST(InputRecord, TheNameListIsEmptyAfterwards) {
  EXPECT_EQ(rebuilt("#alice#", everyone, "").write, "#bob#,#carol#");
  EXPECT_EQ(Is_Name_Empty(), 1);
  EXPECT_EQ(rebuilt("#carol#", "", everyone).deny, "#alice#,#bob#");
}

TEST(InputRecord, ValidUsersAreNotTouched) {
  const Share share = Share{"Music"}.read("#alice#").write(everyone).valid("#old#");
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
      {{"#alice#", everyone, ""},
       "run rebuld_input_data! [1][0]\n",
       "$$$list[#nobody#,#@allaccount#]\n$$$[#bob#,#carol#]\n"},
      {{"", "#bob#", everyone},
       "run rebuld_input_data! [0][1]\n",
       "$$$list[#nobody#,#@allaccount#]\n$$$[#alice#,#carol#]\n"},
      {{"#alice#", "#bob#", ""}, "rebuld_input_data return!!\n", ""},
      {{"", everyone, ""}, "rebuld_input_data return!!\n", ""},
      {{"", "", everyone}, "rebuld_input_data return!!\n", ""},
      {{"#alice#", everyone, everyone}, "", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.listing);
    expect_listing_and_trace([&row] { rebuilt(row.record.read, row.record.write, row.record.deny); },
                             row.listing, std::string(row.listing) + row.trace);
  }
}

} // namespace
} // namespace nasshare::tests
