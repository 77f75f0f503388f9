// The share of the P2P client's download folder.
#include "appliance.h"
#include "debug_output.h"
#include "download_shares.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "volume_table.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *settings_file = "/etc/NAS_CFG/p2psettings.xml";

std::string settings(const std::string &save_path) {
  return "<?xml version=\"1.0\"?>\n<p2p>\n  <settings>\n    <port>6881</port>\n    <save_path>" + save_path +
         "</save_path>\n  </settings>\n</p2p>\n";
}

void saves_to(const std::string &save_path) {
  Appliance{}.file(settings_file, settings(save_path));
}

TEST(P2pShare, IsOpenToEveryone) {
  two_volumes();
  saves_to("/mnt/HD/HD_a2/Downloads");
  create_p2p_share();
  expect_listing(List_Smb_Node, download_listing("P2P", 1, "WD-1", "/mnt/HD/HD_a2/P2P"));
}

TEST(P2pShare, LiesOnTheVolumeThatTheClientSavesTo) {
  two_volumes();
  const std::string on_first = "1 WD-1 /mnt/HD/HD_a2/P2P";
  const std::string on_second = "4 UUID=two /mnt/HD/HD_b2/P2P";
  const struct {
    std::string save_path, place;
  } rows[] = {
      {"/mnt/HD/HD_a2/P2P", on_first},
      {"/mnt/HD/HD_b2/P2P", on_second},
      {"/mnt/HD/HD_b2/Downloads", on_second},
      {"/mnt/HD/HD_b2", on_second},
      {"/mnt/HD/HD_b22/x", on_second},
      {"/data/mnt/HD/HD_b2/x", on_second},
      {"/mnt/HD/HD_b2/mnt/HD/HD_a2", on_first},
      {"/mnt/HD/HD_a2/mnt/HD/HD_b2", on_first},
      {"/mnt/HD/HD_c2/P2P", on_first},
      {"/mnt/HD/HD_d2/P2P", on_first},
      {"/mnt/hd/hd_b2/P2P", on_first},
      {"/mnt/HD/HD_b", on_first},
      {"", on_first},
      {"/mnt/HD/HD_b2/R&amp;B", on_second},
      {"<![CDATA[/mnt/HD/HD_b2/x]]>", on_second},
      {"/mnt/HD/HD_b2/" + std::string(4081, 'x'), on_second},
      {"/mnt/HD/HD_b2/" + std::string(50000, 'x'), on_second},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.save_path.substr(0, 100));
    Free_All_List();
    saves_to(row.save_path);
    create_p2p_share();
    EXPECT_EQ(place("P2P"), row.place);
  }
}

TEST(P2pShare, IsTaggedEvenWhereTheVolumeIsAbsent) {
  two_volumes();
  pss->vol_present[0] = pss->vol_present[1] = 0;
  saves_to("/mnt/HD/HD_b2/x");
  create_p2p_share();
  EXPECT_EQ(place("P2P"), "4 UUID=two /mnt/HD/HD_b2/P2P");
}

TEST(P2pShare, TakesASerialOfTheFullWidth) {
  set_volume(0, 5, "/dev/md1", "UUID=" + std::string(58, 'f'));
  saves_to("/mnt/HD/HD_a2/x");
  create_p2p_share();
  EXPECT_EQ(place("P2P"), "5 UUID=" + std::string(58, 'f') + " /mnt/HD/HD_a2/P2P");
}

// ---- The settings file

TEST(P2pShare, MarksTheListAsChangedInAnyCase) {
  two_volumes();
  create_p2p_share();
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(listed_shares(), Names{});

  pss->list_changed = 0;
  saves_to("/mnt/HD/HD_a2");
  create_p2p_share();
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(listed_shares(), Names{"P2P"});
}

TEST(P2pShare, AnUnusableFileGivesNoShareAndNoWord) {
  two_volumes();
  const std::string whole = settings("/mnt/HD/HD_b2");
  const std::string texts[] = {"",
                               "no XML",
                               whole.substr(0, whole.size() - 3),
                               whole + whole,
                               "<p2p/>",
                               "<p2p>text</p2p>",
                               "<settings><save_path>/mnt/HD/HD_b2</save_path></settings>",
                               "<p2p><Settings><save_path>/mnt/HD/HD_b2</save_path></Settings></p2p>",
                               "<p2p><a><settings><save_path>/mnt/HD/HD_b2</save_path></settings></a></p2p>",
                               settings("\xff"),
                               settings("&nothing;")};
  for (const std::string &text : texts) {
    SCOPED_TRACE(text);
    pss->list_changed = 0;
    Appliance{}.file(settings_file, text);
    Captured captured;
    create_p2p_share();
    EXPECT_EQ(captured.out() + captured.err(), "");
    EXPECT_EQ(listed_shares(), Names{});
    EXPECT_EQ(pss->list_changed, 1);
  }
}

TEST(P2pShare, AFolderInPlaceOfTheFileGivesNoShare) {
  two_volumes();
  Appliance{}.folder(settings_file);
  create_p2p_share();
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(P2pShare, OnlyTheFirstElementsOfTheirNamesCount) {
  two_volumes();
  const std::string on_second = "<save_path>/mnt/HD/HD_b2</save_path>";
  const std::string on_first = "<save_path>/mnt/HD/HD_a2</save_path>";
  const struct {
    std::string text;
    const char *place;
  } rows[] = {
      {"<any><x/><settings><y/>" + on_second + on_first + "</settings></any>",
       "4 UUID=two /mnt/HD/HD_b2/P2P"},
      {"<any><settings>" + on_first + on_second + "</settings></any>", "1 WD-1 /mnt/HD/HD_a2/P2P"},
      {"<any><settings/><settings>" + on_second + "</settings></any>", "1 WD-1 /mnt/HD/HD_a2/P2P"},
      {"<any><settings><z>" + on_second + "</z></settings></any>", "1 WD-1 /mnt/HD/HD_a2/P2P"},
      {"<any><settings/>" + on_second + "</any>", "1 WD-1 /mnt/HD/HD_a2/P2P"},
      {"<any><!-- old --><settings><!-- new -->" + on_second + "</settings></any>",
       "4 UUID=two /mnt/HD/HD_b2/P2P"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.text);
    Free_All_List();
    Appliance{}.file(settings_file, row.text);
    create_p2p_share();
    EXPECT_EQ(place("P2P"), row.place);
  }
}

// ---- Oplocks

TEST(P2pShare, HasNoOplocksWhereAnotherProtocolReachesIt) {
  two_volumes();
  saves_to("/mnt/HD/HD_a2/Downloads");
  for (const OplockRow &row : oplock_rows("/mnt/HD/HD_a2/P2P")) {
    SCOPED_TRACE(std::string(row.afp) + " " + row.nfs + " " + row.exports);
    Free_All_List();
    set_file_services(row);
    create_p2p_share();
    EXPECT_EQ(oplocks("P2P"), row.oplocks);
  }
}

// The folder that is shared counts, not the one that the client names.
TEST(P2pShare, KeepsItsOplocksWhereTheClientsFolderIsExported) {
  two_volumes();
  saves_to("/mnt/HD/HD_a2/Downloads");
  set_file_services({"0", "1", "\"/mnt/HD/HD_a2/Downloads\" *\n", ""});
  create_p2p_share();
  EXPECT_EQ(oplocks("P2P"), "yes");
}

TEST(P2pShare, TheExportsAreComparedOutLoudOnlyWhenTheFlagIsOne) {
  two_volumes();
  saves_to("/mnt/HD/HD_b2");
  const auto create = [] {
    Free_All_List();
    create_p2p_share();
  };
  set_file_services({"0", "1", "\"/mnt/HD/HD_b2/P2P\" *\n", ""});
  expect_trace(create, "get_nfs_path---->[/mnt/HD/HD_b2/P2P]\n"
                       "compare path---->[/mnt/HD/HD_b2/P2P]\n");
  set_file_services({"1", "1", "\"/mnt/HD/HD_b2/P2P\" *\n", ""});
  expect_silence(create); // AFP decides, nothing is compared
}

// ---- The list

TEST(P2pShare, AShareOfTheNameThatIsListedWins) {
  two_volumes();
  Insert_Smb_Node(Share{"P2P"}.path("/mnt/HD/HD_b2/mine").write("#alice#"));
  saves_to("/mnt/HD/HD_a2");
  create_p2p_share();
  EXPECT_EQ(listed_shares(), Names{"P2P"});
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_b2/mine");
  EXPECT_STREQ(pss->head->write_list, "#alice#");
  EXPECT_EQ(pss->list_changed, 1);
}

TEST(P2pShare, ComesBehindTheListedShares) {
  two_volumes();
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/Music"));
  Insert_Smb_Node(Share{"p2p"}.path("/mnt/HD/HD_a2/p2p"));
  saves_to("/mnt/HD/HD_a2");
  create_p2p_share();
  EXPECT_EQ(listed_shares(), (Names{"Music", "p2p", "P2P"}));
}

TEST(P2pShare, IsPublishedButNotStored) {
  Appliance::single_disks();
  saves_to("/mnt/HD/HD_b2/Downloads");
  get_samba_info();
  create_p2p_share();
  EXPECT_EQ(place("P2P"), "1 WD-TESTDISK0002 /mnt/HD/HD_b2/P2P");
  ASSERT_EQ(create_smb_conf(), 0);
  EXPECT_NE(read_file(smb_conf).find("\n[ P2P ]\n"), std::string::npos);
  EXPECT_FALSE(exists(second_share_file));
  EXPECT_EQ(transcript().find("smbcom"), std::string::npos);
  get_samba_info();
  EXPECT_EQ(listed_shares(), Names{});
}

} // namespace
} // namespace nasshare::tests
