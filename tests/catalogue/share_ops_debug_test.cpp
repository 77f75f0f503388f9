// What add_share, mod_share and del_share print with debug output on. What the load in their middle prints
// is a test of its own; here it is whatever a load alone prints.
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "music_and_docs.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "share.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

Appliance one_share() {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/mnt/HD/HD_b2/R&D")
      .folder("/home/common")
      .config("/system_mgr/samba/netbios_name", "ATTIC")
      .shares(share_xml({music()}));
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

// What an operation prints at each value of smb_dbg_flag when both volumes hold these shares. For any value
// but 0 `text` puts it around what loading alone prints.
void expect_around_load(const std::vector<Share> &stored, const std::function<void()> &operation,
                        const std::function<std::string(int flag, const std::string &load)> &text) {
  std::string load;
  const auto restore_and_operate = [&] {
    Appliance{}.shares(share_xml(stored)).ads_shares(share_xml(stored));
    load = output_of(get_samba_info);
    Free_All_List();
    operation();
  };
  expect_output(restore_and_operate, [&](int flag) { return flag == 0 ? "" : text(flag, load); });
}

constexpr const char *no_rebuild = "rebuld_input_data return!!\n";
constexpr const char *lists_of_research = "read_list       : [#alice#]\n"
                                          "write_list      : [#bob#]\n"
                                          "invalid_users   : []\n";

Share listed_music() {
  return music().valid("#nobody#,#@allaccount#");
}

// As the listing has it: it comes after the write, which leaves names, comments and paths escaped.
Share listed_research() {
  return Share{"R&amp;D"}
      .comment("Ideas &amp; drafts")
      .path("/mnt/HD/HD_b2/R&amp;D")
      .browseable("yes")
      .public_("yes")
      .oplocks("no")
      .map_archive("no")
      .read("#alice#")
      .write("#bob#")
      .deny("#nobody#")
      .valid("#alice#,#bob#")
      .recycle(1)
      .on_disk("WD-TESTDISK0002");
}

TEST(AddShareOutput, IsNothingWithoutTheFlag) {
  one_share();
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(research()), 1); }), "");
}

TEST(AddShareOutput, HasListsLoadTagAndListing) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(add_share(research()), 1); },
      [](int /*flag*/, const std::string &load) {
        return std::string(no_rebuild) + lists_of_research + load + "####p->hd_serial [WD-TESTDISK0002]\n" +
               share_listing({listed_music(), listed_research()});
      });
}

TEST(AddShareOutput, HasTheRewrittenLists) {
  one_share();
  expect_around_load(
      {}, [] { EXPECT_EQ(add_share(music().read("#alice#").deny("#carol#")), 1); },
      [](int flag, const std::string &load) {
        return std::string("run rebuld_input_data! [1][0]\n") +
               (flag == 1 ? "$$$list[#nobody#,#@allaccount#]\n$$$[#bob#]\n" : "") +
               "read_list       : [#alice#]\n"
               "write_list      : [#bob#]\n"
               "invalid_users   : [#carol#]\n" +
               load + "####p->hd_serial [WD-TESTDISK0001]\n" +
               share_listing(
                   {music().read("#alice#").write("#bob#").deny("#nobody#,#carol#").valid("#alice#,#bob#")});
      });
}

TEST(AddShareOutput, HasNoWordOfTheRebuildInDomainMode) {
  one_share().config("/system_mgr/samba/ads_enable", "1");
  expect_around_load(
      {music()}, [] { EXPECT_EQ(add_share(research()), 1); },
      [](int /*flag*/, const std::string &load) {
        return lists_of_research + load + "####p->hd_serial [WD-TESTDISK0002]\n" +
               share_listing({listed_music(), listed_research()});
      });
}

TEST(AddShareOutput, HasNoTagForAPathOnNeitherVolume) {
  one_share();
  expect_around_load(
      {}, [] { EXPECT_EQ(add_share(research().path("/home/common").tag(7, "far")), 1); },
      [](int /*flag*/, const std::string &load) {
        return std::string(no_rebuild) + lists_of_research + load +
               share_listing({listed_research().path("/home/common").tag(7, "far")});
      });
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
    expect_listing([&row] { EXPECT_EQ(add_share(row.share), 0); }, row.message);
  }
}

TEST(AddShareOutput, OfAPathWithoutATerminatorEndsWithTheField) {
  const Share share{"Music"};
  smb_share &record = share.record();
  overfill(record.path, 'x');
  expect_listing([&record] { EXPECT_EQ(add_share(&record), 0); },
                 "input data error! [" + std::string(sizeof record.path, 'x') + "]\n");
}

TEST(AddShareOutput, OfNoRecordHasAnEmptyPath) {
  expect_listing([] { add_share(nullptr); }, "input data error! []\n");
}

TEST(AddShareOutput, EndsWithTheLoadForATakenName) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_b2/R&D")), 0); },
      [](int /*flag*/, const std::string &load) {
        return no_rebuild +
               std::string("read_list       : []\n"
                           "write_list      : []\n"
                           "invalid_users   : []\n") +
               load;
      });
}

TEST(ModShareOutput, HasTheLoadButNeitherListsNorTagNorListing) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(mod_share(music().comment("new")), 1); },
      [](int /*flag*/, const std::string &load) { return no_rebuild + load; });
}

TEST(ModShareOutput, HasTheTracesOfTheRebuildForTheFlagOneOnly) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(mod_share(music().write("#bob#").deny("#nobody#,#@allaccount#")), 1); },
      [](int flag, const std::string &load) {
        return "run rebuld_input_data! [0][1]\n" +
               std::string(flag == 1 ? "$$$list[#nobody#,#@allaccount#]\n$$$[#alice#,#carol#]\n" : "") + load;
      });
}

TEST(ModShareOutput, OfInvalidInputIsALineWithoutAPath) {
  one_share();
  const std::string message = "input data error!\n";
  expect_listing([] { mod_share(Share{"Music"}.path("/mnt/HD/HD_a2/absent")); }, message);
  expect_listing([] { mod_share(nullptr); }, message);
}

TEST(ModShareOutput, OfAnAbsentNameIsThatOfTheLoad) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(mod_share(research()), 0); },
      [](int /*flag*/, const std::string &load) { return no_rebuild + load; });
}

TEST(DelShareOutput, IsThatOfTheLoad) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(del_share("Music"), 1); },
      [](int /*flag*/, const std::string &load) { return load; });
}

TEST(DelShareOutput, NamesAnAbsentShareAfterTheLoad) {
  one_share();
  expect_around_load(
      {music()}, [] { EXPECT_EQ(del_share("mus%sic"), 0); },
      [](int /*flag*/, const std::string &load) { return load + "not find mus%sic\n"; });
}

TEST(DelShareOutput, OfAnEmptyNameIsNothing) {
  one_share();
  expect_silence([] { del_share(""); });
  expect_silence([] { del_share(nullptr); });
}

} // namespace
} // namespace nasshare::tests
