// nasshare-diag, run as a program.
#include "appliance.h"
#include "dfs_files.h"
#include "domain.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "output.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

constexpr const char *debug_mode = "OPEN DEBUG MODE!!\n";

constexpr const char *tokenizer_test = "test_str=[#roy#,#@gr oup#,#abc#,#aaa#,#bbb#,#ccc#,#amy#]\n"
                                       "@-[roy]\n"
                                       "@-[@gr oup]\n"
                                       "@-[abc]\n"
                                       "@-[aaa]\n"
                                       "@-[bbb]\n"
                                       "@-[ccc]\n"
                                       "@-[amy]\n";

// As the driver's own shares are stored.
Share stored(const std::string &name) {
  return stored_share(name).oplocks("no").everyone();
}

Share music() {
  return stored("Music").oplocks("yes");
}

Appliance one_share() {
  return Appliance::single_disks()
      .config("/system_mgr/samba/netbios_name", "ATTIC")
      .shares(share_xml({music()}));
}

// Standard output of a run, which has to end well and complain of nothing.
std::string diag(std::vector<std::string> options) {
  options.insert(options.begin(), NASSHARE_DIAG);
  const Ended ended = run_program(options);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  return ended.out;
}

// What loading and listing prints in this very machine with debug mode on.
std::string catalogue_output() {
  smb_dbg_flag = 1;
  std::string text = output_of([] {
    get_samba_info2();
    List_Smb_Node();
  });
  Free_All_List();
  smb_dbg_flag = 0;
  return text;
}

TEST(Diag, WithoutOptionsDoesNothing) {
  one_share();
  EXPECT_EQ(diag({}), "");
  EXPECT_EQ(kernel_requests(), "");
  EXPECT_EQ(transcript(), "");
}

TEST(Diag, IgnoresUnknownOptionsAndGoesOn) {
  Appliance{};
  EXPECT_EQ(diag({"-z"}), "");
  EXPECT_EQ(diag({"-?", "--long", "-z9"}), "");
  EXPECT_EQ(diag({"-z", "-f"}), tokenizer_test);
  EXPECT_EQ(diag({"-zfz"}), tokenizer_test);
}

TEST(Diag, OpensDebugMode) {
  Appliance{};
  EXPECT_EQ(diag({"-d"}), debug_mode);
  EXPECT_EQ(diag({"-D"}), debug_mode);
  EXPECT_EQ(diag({"-dD"}), std::string(debug_mode) + debug_mode);
}

TEST(Diag, SplitsTheTestList) {
  Appliance{};
  EXPECT_EQ(diag({"-f"}), tokenizer_test);
  EXPECT_EQ(diag({"-df", "-f"}), std::string(debug_mode) + tokenizer_test + tokenizer_test);
}

TEST(Diag, ListsTheCatalogueInDebugMode) {
  one_share().mount("/dev/sdc1", "/mnt/USB/HD_c1");
  const std::string catalogue = catalogue_output();
  ASSERT_NE(catalogue.find("name            : [USBDisk1_1]\n"), std::string::npos);
  EXPECT_EQ(diag({"-d", "-e"}), debug_mode + catalogue);
  EXPECT_EQ(diag({"-De"}), debug_mode + catalogue);
}

TEST(Diag, ReleasesTheCatalogueBeforeTheNextListing) {
  one_share();
  const std::string catalogue = catalogue_output();
  EXPECT_EQ(diag({"-d", "-e", "-e"}), debug_mode + catalogue + catalogue);
}

TEST(Diag, ListsNothingOutsideDebugMode) {
  one_share();
  EXPECT_EQ(diag({"-e"}), "");
}

TEST(Diag, ActsInTheOrderOfTheOptions) {
  one_share();
  EXPECT_EQ(diag({"-e", "-d", "-f"}), std::string(debug_mode) + tokenizer_test);
}

TEST(Diag, ListsTheCatalogueAsTheConfigurationWriterSeesIt) {
  one_share().config("/system_mgr/afp/enable", "1");
  EXPECT_NE(diag({"-d", "-e"}).find("oplocks         : [no]\n"), std::string::npos);
}

TEST(Diag, AddsAShareWithSpecialCharacters) {
  one_share().folder("/mnt/HD/HD_a2/~`!@#$^&()_-+=',.a");
  EXPECT_EQ(diag({"-a"}), "");
  EXPECT_EQ(
      read_file(first_share_file),
      share_xml(
          {music(),
           stored("~`!@#$^&()_-',.a").path("/mnt/HD/HD_a2/~`!@#$^&()_-+=',.a").comment("it is test 1")}));
  EXPECT_EQ(transcript(), "smbcom\n");
  EXPECT_EQ(chk_share("~`!@#$^&()_-',.a"), 0);
}

TEST(Diag, AddsTheShareOfFourteenR) {
  one_share().folder("/mnt/HD/HD_a2/recycle");
  EXPECT_EQ(diag({"-r"}), "");
  EXPECT_EQ(read_file(first_share_file),
            share_xml({music(),
                       stored("RRRRRRRRRRRRRR").path("/mnt/HD/HD_a2/recycle").comment("it is test RRRRRR")}));
}

TEST(Diag, AddsTheShareTest) {
  one_share().folder("/mnt/HD/HD_a2/test");
  EXPECT_EQ(diag({"-x"}), "");
  EXPECT_EQ(read_file(first_share_file), share_xml({music(), stored("test").comment("it is a test")}));
}

TEST(Diag, AddsNothingWhereTheFolderIsMissing) {
  one_share();
  EXPECT_EQ(diag({"-arx"}), "");
  EXPECT_EQ(diag({"-d", "-a", "-r", "-x"}), "OPEN DEBUG MODE!!\n"
                                            "input data error! [/mnt/HD/HD_a2/~`!@#$^&()_-+=',.a]\n"
                                            "input data error! [/mnt/HD/HD_a2/recycle]\n"
                                            "input data error! [/mnt/HD/HD_a2/test]\n");
  EXPECT_EQ(read_file(first_share_file), share_xml({music()}));
  EXPECT_EQ(transcript(), "");
}

TEST(Diag, AddsAShareOnlyOnce) {
  one_share().folder("/mnt/HD/HD_a2/test");
  EXPECT_EQ(diag({"-x", "-x"}), "");
  EXPECT_EQ(read_file(first_share_file), share_xml({music(), stored("test").comment("it is a test")}));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(Diag, AddsSeveralSharesInOrder) {
  one_share().folder("/mnt/HD/HD_a2/test").folder("/mnt/HD/HD_a2/recycle");
  EXPECT_EQ(diag({"-xr"}), "");
  EXPECT_EQ(read_file(first_share_file),
            share_xml({music(), stored("test").comment("it is a test"),
                       stored("RRRRRRRRRRRRRR").path("/mnt/HD/HD_a2/recycle").comment("it is test RRRRRR")}));
}

TEST(Diag, DeletesTheShareTestTest) {
  one_share().shares("/mnt/HD_a4",
                     share_xml({stored("test test").path("/mnt/HD/HD_a2/tt"), music(), stored("test")}));
  EXPECT_EQ(diag({"-b"}), "");
  EXPECT_EQ(read_file(first_share_file), share_xml({music(), stored("test")}));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(Diag, DeletesNothingWhereThereIsNone) {
  one_share();
  EXPECT_EQ(diag({"-b"}), "");
  EXPECT_EQ(read_file(first_share_file), share_xml({music()}));
  const std::string text = diag({"-d", "-b"});
  const std::string end = "not find test test\n";
  ASSERT_GE(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
  EXPECT_EQ(transcript(), "");
}

TEST(Diag, ShowsAShareThatItAddedBefore) {
  one_share().folder("/mnt/HD/HD_a2/test");
  const std::string text = diag({"-x", "-d", "-e"});
  EXPECT_EQ(text, debug_mode + catalogue_output());
  EXPECT_NE(text.find("name            : [test]\n"), std::string::npos);
}

TEST(Diag, AReportThatCannotBeWrittenIsNoSuccess) {
  Appliance{};
  const Ended ended = run_program({"sh", "-c", NASSHARE_DIAG " -f >/dev/full"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err, "nasshare-diag: the output could not be written\n");
}

TEST(Diag, WithAClosedOutputTheTraceLandsInNoFile) {
  one_share().folder("/mnt/HD/HD_a2/test");
  const std::string often(50, 'x'); // more than the stream's buffer holds
  EXPECT_EQ(run_program({"sh", "-c", NASSHARE_DIAG " -d" + often + " >&-"}).status, 0);
  EXPECT_EQ(shell("cat /run/*.lock").out, "");
}

TEST(Diag, AnAbsentVolumeOrDiskEndsItAtOnce) {
  Appliance{};
  for (const char *option : {"-e", "-b", "-c"}) {
    SCOPED_TRACE(option);
    const Ended ended = run_program({NASSHARE_DIAG, "-f", option, "-f"});
    EXPECT_EQ(ended.status, 255);
    EXPECT_EQ(ended.out, tokenizer_test);
  }
}

// ---- Option c: the account z700 on Volume_1 (deny), Volume_2 and Volume_3 (write)

// Volume_1 is open to everyone, Volume_2 to alice; there is no Volume_3.
Appliance two_volume_shares() {
  const std::vector<Share> shares{
      stored("Volume_1").path("/mnt/HD/HD_a2"),
      stored("Volume_2").path("/mnt/HD/HD_b2").on_disk("WD-TESTDISK0002").write("#alice#").deny("#nobody#")};
  return one_share().shares(share_xml(shares)).user("z700", 1003, 500);
}

std::string two_volume_shares_once_changed(const char *denied) {
  return share_xml({stored("Volume_1").path("/mnt/HD/HD_a2").write("#alice#,#bob#,#carol#").deny(denied),
                    stored("Volume_2")
                        .path("/mnt/HD/HD_b2")
                        .on_disk("WD-TESTDISK0002")
                        .write("#alice#,#z700#")
                        .deny("#nobody#")});
}

// What the changes print in debug mode once the catalogue is loaded.
constexpr const char *account_changes = "$$$list[#nobody#,#@allaccount#]\n"
                                        "$$$[#alice#,#bob#,#carol#]\n"
                                        "1-->\n"
                                        "2-->#alice#,#bob#,#carol#\n"
                                        "3-->#z700#\n"
                                        "1-->\n"
                                        "2-->#alice#,#z700#\n"
                                        "3-->#nobody#\n";

std::string loading_output() {
  smb_dbg_flag = 1;
  const std::string text = output_of(get_samba_info);
  Free_All_List();
  smb_dbg_flag = 0;
  return text;
}

TEST(Diag, ChangesTheTestAccountOnEveryVolume) {
  two_volume_shares();
  EXPECT_EQ(diag({"-c"}), "");
  EXPECT_EQ(read_file(first_share_file), two_volume_shares_once_changed("#z700#"));
  EXPECT_EQ(read_file(second_share_file), two_volume_shares_once_changed("#z700#"));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(Diag, ShowsTheAccountChangesInDebugMode) {
  two_volume_shares();
  const std::string loading = loading_output();
  EXPECT_EQ(diag({"-d", "-c"}), debug_mode + loading + account_changes);
}

// Loading denies the guest as well, where anybody is denied.
TEST(Diag, ChangesTheTestAccountAsOftenAsItIsAsked) {
  two_volume_shares();
  EXPECT_EQ(diag({"-c", "-c"}), "");
  EXPECT_EQ(read_file(first_share_file), two_volume_shares_once_changed("#nobody#,#z700#"));
  EXPECT_EQ(transcript(), "smbcom\nsmbcom\n");
}

TEST(Diag, ChangesNoShareWhereThereIsNoneOfTheNames) {
  one_share();
  EXPECT_EQ(diag({"-c"}), "");
  EXPECT_EQ(read_file(first_share_file), share_xml({music()}));
  EXPECT_EQ(transcript(), "smbcom\n");
}

// ---- Option s: join the configured domain

Appliance domain_member_answered(const std::string &join_output = "", const std::string &ticket_output = "") {
  return domain_member().command("net", join_output).command("kinit", ticket_output);
}

TEST(Diag, JoinsTheConfiguredDomain) {
  domain_member_answered(recording("domain/net-ads-join-ok.stdout"), recording("domain/kinit-ok.stdout"));
  EXPECT_EQ(diag({"-s"}), "");
  EXPECT_EQ(transcript(), std::string(steps_to_the_join) + "kinit Administrator@CORP.LAN\n"
                                                           "winbindd\n"
                                                           "wbinfo -u\n"
                                                           "smbcom\n"
                                                           "smbcmd -l\n");
  EXPECT_NE(read_file("/etc/krb5.conf").find("kdc = dc1:88\n"), std::string::npos);
  EXPECT_NE(read_file("/etc/nsswitch.conf").find("passwd:     files winbind\n"), std::string::npos);
}

TEST(Diag, ShowsTheJoinInDebugMode) {
  domain_member_answered(recording("domain/net-ads-join-ok.stdout"), recording("domain/kinit-ok.stdout"));
  EXPECT_EQ(diag({"-ds"}), std::string(debug_mode) + join_echo + ticket_echo);
}

TEST(Diag, ShowsAFailedJoinInDebugModeAndEndsWellAllTheSame) {
  domain_member_answered("Failed to join domain: failed to find DC\n");
  EXPECT_EQ(diag({"-d", "-s", "-f"}),
            std::string(debug_mode) + join_echo + "ADS_JOIN_ERROR : [55]\n" + tokenizer_test);
  EXPECT_EQ(transcript(), steps_to_the_join);
}

TEST(Diag, ShowsARefusedTicketInDebugMode) {
  domain_member_answered("", "Clock skew too great\n");
  EXPECT_EQ(diag({"-Ds"}), std::string(debug_mode) + join_echo + ticket_echo + "KINIT_ERROR : [101]\n");
}

TEST(Diag, JoinsNothingOutsideADomain) {
  domain_member_answered().config("/system_mgr/samba/ads_enable", "0");
  const std::string nsswitch = read_file("/etc/nsswitch.conf");
  EXPECT_EQ(diag({"-s"}), "");
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(read_file("/etc/nsswitch.conf"), nsswitch);
  EXPECT_FALSE(exists("/etc/krb5.conf"));
}

// ---- Option t: the DFS group

constexpr const char *group_name = "[~!@#$%^&avc]\n";
constexpr const char *group_test = "[~!@#$%^&avc]\ntrue\n";

// The escaped name is the group's name, and is escaped once more in the file.
const std::string stored_group = group_file({"~!@#$%^&amp;amp;avc"});

TEST(Diag, AddsTheTestGroup) {
  Appliance{};
  EXPECT_EQ(diag({"-t"}), group_test);
  EXPECT_EQ(read_file(group_path), stored_group);
  EXPECT_EQ(transcript(), "");
}

TEST(Diag, FindsTheTestGroupThatIsThereAlready) {
  Appliance{};
  EXPECT_EQ(diag({"-t", "-d", "-t"}), std::string(group_test) + debug_mode + group_test);
  EXPECT_EQ(diag({"-t"}), group_test);
  EXPECT_EQ(read_file(group_path), stored_group);
}

TEST(Diag, SaysNothingOfAGroupThatCannotBeStored) {
  Appliance{}.remove("/etc/NAS_CFG").file("/etc/NAS_CFG", "");
  EXPECT_EQ(diag({"-t"}), group_name);
}

// ---- Any order and combination

// The machine on which every option has something to do.
Appliance busy_machine() {
  return two_volume_shares()
      .folder("/mnt/HD/HD_a2/test")
      .folder("/mnt/HD/HD_a2/recycle")
      .folder("/mnt/HD/HD_a2/~`!@#$^&()_-+=',.a");
}

struct Order {
  std::vector<std::string> options;
  std::string output;
};

// googletest prints it for a case that fails.
std::ostream &operator<<(std::ostream &out, const Order &order) {
  for (const std::string &option : order.options) {
    out << option << ' ';
  }
  return out;
}

class DiagOrder : public testing::TestWithParam<Order> {};

TEST_P(DiagOrder, MakesNoDifferenceToWhatIsDone) {
  busy_machine();
  EXPECT_EQ(diag(GetParam().options), GetParam().output);
  EXPECT_EQ(read_file(group_path), stored_group);
  for (const char *name : {"test", "RRRRRRRRRRRRRR", "~`!@#$^&()_-',.a"}) {
    EXPECT_EQ(chk_share(name), 0) << name;
  }
  EXPECT_NE(read_file(first_share_file).find("#z700#</invalid_users>"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Any, DiagOrder,
    testing::Values(Order{{"-abcefsrxt"}, std::string(tokenizer_test) + group_test},
                    Order{{"-txrsfecba"}, std::string(group_test) + tokenizer_test},
                    Order{{"-t", "-x", "-r", "-s", "-f", "-e", "-c", "-b", "-a"},
                          std::string(group_test) + tokenizer_test},
                    Order{{"-a", "-b", "-c", "-e", "-f", "-s", "-r", "-x", "-t"},
                          std::string(tokenizer_test) + group_test},
                    Order{{"-xr", "-sbfz", "-z", "-tce", "-a"}, std::string(tokenizer_test) + group_test},
                    Order{{"-ftf", "-arx", "-csbe", "-t"},
                          std::string(tokenizer_test) + group_test + tokenizer_test + group_test},
                    Order{{"word", "-f", "word", "-tcxar"}, std::string(tokenizer_test) + group_test}));

TEST(Diag, PrintsDebugOutputFromTheOptionThatOpensItOn) {
  two_volume_shares();
  const std::string loading = loading_output();
  EXPECT_EQ(diag({"-tfs", "-d", "-ft"}),
            std::string(group_test) + tokenizer_test + debug_mode + tokenizer_test + group_test);
  EXPECT_EQ(diag({"-eDc"}), debug_mode + loading + account_changes);
}

TEST(Diag, ActsOnWhatTheOptionsBeforeLeft) {
  two_volume_shares().folder("/mnt/HD/HD_a2/test");
  const std::string text = diag({"-x", "-c", "-d", "-e"});
  EXPECT_EQ(text, debug_mode + catalogue_output());
  EXPECT_NE(text.find("invalid_users   : [#nobody#,#z700#]\n"), std::string::npos);
  EXPECT_NE(text.find("name            : [test]\n"), std::string::npos);
}

TEST(Diag, TakesNoOptionBehindADoubleDash) {
  Appliance{};
  EXPECT_EQ(diag({"-f", "--", "-t"}), tokenizer_test);
  EXPECT_FALSE(exists(group_path));
}

} // namespace
} // namespace nasshare::tests
