// What add_share, mod_share and del_share print with debug output on. What the load in their middle prints
// is a test of its own; here it is whatever a load alone prints.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "output.h"
#include "share.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

Share stored(const char *name, const std::string &path) {
  return Share{name}.path(path).oplocks("yes").map_archive("no").everyone().on_disk("WD-TESTDISK0001");
}

Share music() {
  return stored("Music", "/mnt/HD/HD_a2/Music");
}

Appliance one_share() {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/mnt/HD/HD_b2/R&D")
      .folder("/home/common")
      .config("/system_mgr/samba/netbios_name", "ATTIC")
      .shares("/mnt/HD_a4", share_xml({music()}))
      .shares("/mnt/HD_b4", share_xml({music()}));
}

// A share whose lists are stored as they are.
Share research() {
  return Share{"R&D"}
      .comment("Ideas & drafts")
      .path("/mnt/HD/HD_b2/R&D")
      .oplocks("no")
      .map_archive("no")
      .read("#alice#")
      .write("#bob#")
      .recycle(1);
}

struct Outcome {
  int answer = -1;
  std::string load; // what loading alone prints just before
  std::string out;
};

Outcome outcome_of(int flag, const std::function<int()> &operation) {
  smb_dbg_flag = flag;
  Outcome outcome;
  outcome.load = output_of(get_samba_info);
  Free_All_List();
  outcome.out = output_of([&] { outcome.answer = operation(); });
  return outcome;
}

constexpr const char *lists_of_research = "read_list       : [#alice#]\n"
                                          "write_list      : [#bob#]\n"
                                          "invalid_users   : []\n";

constexpr const char *list_with_research = "\n"
                                           "volume_raid     : [1]\n"
                                           "hd_serial       : [WD-TESTDISK0001]\n"
                                           "name            : [Music]\n"
                                           "comment         : []\n"
                                           "path            : [/mnt/HD/HD_a2/Music]\n"
                                           "browseable      : [yes]\n"
                                           "public          : [yes]\n"
                                           "oplocks         : [yes]\n"
                                           "map_archive     : [no]\n"
                                           "read_list       : []\n"
                                           "write_list      : [#nobody#,#@allaccount#]\n"
                                           "invalid_users   : []\n"
                                           "valid_users     : [#nobody#,#@allaccount#]\n"
                                           "recycle_enable  : [0]\n"
                                           "recycle_tree    : [0]\n"
                                           "\n"
                                           "volume_raid     : [1]\n"
                                           "hd_serial       : [WD-TESTDISK0002]\n"
                                           "name            : [R&amp;D]\n"
                                           "comment         : [Ideas &amp; drafts]\n"
                                           "path            : [/mnt/HD/HD_b2/R&amp;D]\n"
                                           "browseable      : [yes]\n"
                                           "public          : [yes]\n"
                                           "oplocks         : [no]\n"
                                           "map_archive     : [no]\n"
                                           "read_list       : [#alice#]\n"
                                           "write_list      : [#bob#]\n"
                                           "invalid_users   : [#nobody#]\n"
                                           "valid_users     : [#alice#,#bob#]\n"
                                           "recycle_enable  : [1]\n"
                                           "recycle_tree    : [0]\n"
                                           "\n";

TEST(AddShareOutput, IsNothingWithoutTheFlag) {
  one_share();
  const Outcome outcome = outcome_of(0, [] { return add_share(research()); });
  EXPECT_EQ(outcome.answer, 1);
  EXPECT_EQ(outcome.out, "");
}

// The listing comes after the write, which leaves names, comments and paths escaped.
TEST(AddShareOutput, HasListsLoadTagAndListing) {
  Appliance machine = one_share();
  for (const int flag : {1, 2}) {
    SCOPED_TRACE(flag);
    machine.shares("/mnt/HD_a4", share_xml({music()})).shares("/mnt/HD_b4", share_xml({music()}));
    const Outcome outcome = outcome_of(flag, [] { return add_share(research()); });
    EXPECT_EQ(outcome.answer, 1);
    EXPECT_EQ(outcome.out, std::string("rebuld_input_data return!!\n") + lists_of_research + outcome.load +
                               "####p->hd_serial [WD-TESTDISK0002]\n" + list_with_research);
  }
}

TEST(AddShareOutput, HasTheRewrittenLists) {
  Appliance machine = one_share();
  for (const int flag : {1, 2}) {
    SCOPED_TRACE(flag);
    machine.shares("/mnt/HD_a4", share_xml({})).shares("/mnt/HD_b4", share_xml({}));
    const Outcome outcome =
        outcome_of(flag, [] { return add_share(music().read("#alice#").deny("#carol#")); });
    const std::string start = std::string("run rebuld_input_data! [1][0]\n") +
                              (flag == 1 ? "$$$list[#nobody#,#@allaccount#]\n$$$[#bob#]\n" : "") +
                              "read_list       : [#alice#]\n"
                              "write_list      : [#bob#]\n"
                              "invalid_users   : [#carol#]\n" +
                              outcome.load + "####p->hd_serial [WD-TESTDISK0001]\n\nvolume_raid     : [1]\n";
    EXPECT_EQ(outcome.out.substr(0, start.size()), start);
  }
}

TEST(AddShareOutput, HasNoWordOfTheRebuildInDomainMode) {
  Appliance machine = one_share().config("/system_mgr/samba/ads_enable", "1");
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    machine.ads_shares("/mnt/HD_a4", share_xml({music()})).remove("/mnt/HD_b4/.systemfile/.smb_ads.xml");
    const Outcome outcome = outcome_of(flag, [] { return add_share(research()); });
    EXPECT_EQ(outcome.answer, 1);
    EXPECT_EQ(outcome.out, flag == 0 ? ""
                                     : lists_of_research + outcome.load +
                                           "####p->hd_serial [WD-TESTDISK0002]\n" + list_with_research);
  }
}

TEST(AddShareOutput, HasNoTagForAPathOnNeitherVolume) {
  Appliance machine = one_share();
  for (const int flag : {1, 2}) {
    SCOPED_TRACE(flag);
    machine.shares("/mnt/HD_a4", share_xml({})).shares("/mnt/HD_b4", share_xml({}));
    const Outcome outcome =
        outcome_of(flag, [] { return add_share(Share(research()).path("/home/common").tag(7, "far")); });
    const std::string start = std::string("rebuld_input_data return!!\n") + lists_of_research + outcome.load +
                              "\nvolume_raid     : [7]\nhd_serial       : [far]\n";
    EXPECT_EQ(outcome.out.substr(0, start.size()), start);
  }
}

TEST(AddShareOutput, NamesThePathOfInvalidInput) {
  one_share();
  const struct {
    Share share;
    const char *message;
  } rows[] = {
      {Share{"New"}.path("/mnt/HD/HD_a2/absent"), "input data error! [/mnt/HD/HD_a2/absent]\n"},
      {Share{"New"}, "input data error! []\n"},
      {Share{""}.path("/mnt/HD/HD_a2/Music"), "input data error! [/mnt/HD/HD_a2/Music]\n"},
      {Share{"New"}.path("/%s%n"), "input data error! [/%s%n]\n"},
  };
  for (const auto &row : rows) {
    for (const int flag : {0, 1, 2}) {
      SCOPED_TRACE(flag);
      smb_dbg_flag = flag;
      EXPECT_EQ(output_of([&row] { EXPECT_EQ(add_share(row.share), 0); }), flag == 0 ? "" : row.message);
    }
  }
}

TEST(AddShareOutput, OfAPathWithoutATerminatorEndsWithTheField) {
  smb_share record = Share{"Music"};
  std::memset(record.path, 'x', sizeof record.path);
  smb_dbg_flag = 2;
  EXPECT_EQ(output_of([&] { EXPECT_EQ(add_share(&record), 0); }),
            "input data error! [" + std::string(sizeof record.path, 'x') + "]\n");
}

TEST(AddShareOutput, OfNoRecordHasAnEmptyPath) {
  for (const int flag : {0, 1, 2}) {
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { add_share(nullptr); }), flag == 0 ? "" : "input data error! []\n") << flag;
  }
}

TEST(AddShareOutput, EndsWithTheLoadForATakenName) {
  one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    const Outcome outcome =
        outcome_of(flag, [] { return add_share(Share{"Music"}.path("/mnt/HD/HD_b2/R&D")); });
    EXPECT_EQ(outcome.answer, 0);
    EXPECT_EQ(outcome.out, flag == 0 ? ""
                                     : "rebuld_input_data return!!\n"
                                       "read_list       : []\n"
                                       "write_list      : []\n"
                                       "invalid_users   : []\n" +
                                           outcome.load);
  }
}

TEST(ModShareOutput, HasTheLoadButNeitherListsNorTagNorListing) {
  one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    const Outcome outcome = outcome_of(flag, [] { return mod_share(music().comment("new")); });
    EXPECT_EQ(outcome.answer, 1);
    EXPECT_EQ(outcome.out, flag == 0 ? "" : "rebuld_input_data return!!\n" + outcome.load);
  }
}

TEST(ModShareOutput, HasTheTracesOfTheRebuildForTheFlagOneOnly) {
  Appliance machine = one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    machine.shares("/mnt/HD_a4", share_xml({music()})).shares("/mnt/HD_b4", share_xml({music()}));
    const Outcome outcome =
        outcome_of(flag, [] { return mod_share(music().write("#bob#").deny("#nobody#,#@allaccount#")); });
    EXPECT_EQ(outcome.answer, 1);
    const std::string trace = flag == 1 ? "$$$list[#nobody#,#@allaccount#]\n$$$[#alice#,#carol#]\n" : "";
    EXPECT_EQ(outcome.out, flag == 0 ? "" : "run rebuld_input_data! [0][1]\n" + trace + outcome.load);
  }
}

TEST(ModShareOutput, OfInvalidInputIsALineWithoutAPath) {
  one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    const std::string message = flag == 0 ? "" : "input data error!\n";
    EXPECT_EQ(output_of([] { mod_share(Share{"Music"}.path("/mnt/HD/HD_a2/absent")); }), message);
    EXPECT_EQ(output_of([] { mod_share(nullptr); }), message);
  }
}

TEST(ModShareOutput, OfAnAbsentNameIsThatOfTheLoad) {
  one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    const Outcome outcome = outcome_of(flag, [] { return mod_share(research()); });
    EXPECT_EQ(outcome.answer, 0);
    EXPECT_EQ(outcome.out, flag == 0 ? "" : "rebuld_input_data return!!\n" + outcome.load);
  }
}

TEST(DelShareOutput, IsThatOfTheLoad) {
  Appliance machine = one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    machine.shares("/mnt/HD_a4", share_xml({music()})).shares("/mnt/HD_b4", share_xml({music()}));
    const Outcome outcome = outcome_of(flag, [] { return del_share("Music"); });
    EXPECT_EQ(outcome.answer, 1);
    EXPECT_EQ(outcome.out, outcome.load);
  }
}

TEST(DelShareOutput, NamesAnAbsentShareAfterTheLoad) {
  one_share();
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    const Outcome outcome = outcome_of(flag, [] { return del_share("mus%sic"); });
    EXPECT_EQ(outcome.answer, 0);
    EXPECT_EQ(outcome.out, outcome.load + (flag == 0 ? "" : "not find mus%sic\n"));
  }
}

TEST(DelShareOutput, OfAnEmptyNameIsNothing) {
  one_share();
  smb_dbg_flag = 1;
  EXPECT_EQ(output_of([] { del_share(""); }), "");
  EXPECT_EQ(output_of([] { del_share(nullptr); }), "");
}

} // namespace
} // namespace nasshare::tests
