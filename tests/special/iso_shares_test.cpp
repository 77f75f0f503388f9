// Mounted ISO images as shares: which catalogue is read and what a share of it looks like.
#include "access_lists.h"
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "iso_catalogue.h"
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
#include <vector>

namespace nasshare::tests {
namespace {

constexpr const char *iso_file_of_second = "/mnt/HD_b4/.systemfile/.iso_mount.xml";
constexpr const char *domain_iso_file = "/mnt/HD_a4/.systemfile/.iso_mount_ads.xml";

void read_first_volume() {
  set_single_disk(0, "WD-1");
  isoMount_readXml(0);
}

void read_first_volume(const std::string &text) {
  Appliance{}.file(iso_file, text);
  read_first_volume();
}

// Both disks, each with one image named after it.
void an_image_on_each_disk() {
  set_single_disk(0, "WD-1");
  set_single_disk(1, "WD-2");
  mounted_images({{.name = "One"}});
  Appliance{}.file(iso_file_of_second, iso_catalogue({Image{.name = "Two", .hd_serial = "WD-2"}}));
}

// ---- The share of an image

TEST(IsoShares, AnImageBecomesAShareThatIsReadOnly) {
  mounted_images({{.name = "Film",
                   .mount_path = "/mnt/isoMount/film",
                   .comment = "The film",
                   .read_list = "#alice#,#@staff#",
                   .invalid_users = "#carol#"}});
  read_first_volume();
  expect_listing(List_Smb_Node, share_listing({Share{"Film"}
                                                   .on_disk("WD-1")
                                                   .comment("The film")
                                                   .path("/mnt/isoMount/film")
                                                   .browseable("yes")
                                                   .public_("yes")
                                                   .oplocks("yes")
                                                   .map_archive("no")
                                                   .read("#alice#,#@staff#")
                                                   .deny("#nobody#,#carol#")
                                                   .valid("#alice#,#@staff#")}));
  EXPECT_EQ(pss->list_changed, 0);
}

TEST(IsoShares, NoOtherElementOfAnItemCounts) {
  read_first_volume(iso_catalogue_of("<item><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial>"
                                     "<name>Film</name><path>/elsewhere</path><mount_path>/film</mount_path>"
                                     "<write_list>#bob#</write_list><valid_users>#bob#</valid_users>"
                                     "<read_list>#alice#</read_list><oplocks>no</oplocks>"
                                     "<map_archive>yes</map_archive><recycle_enable>1</recycle_enable>"
                                     "<browseable>no</browseable><name>Second</name></item>"));
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->path, "/film");
  EXPECT_STREQ(pss->head->write_list, "");
  EXPECT_STREQ(pss->head->valid_users, "#alice#");
  EXPECT_STREQ(pss->head->oplocks, "yes");
  EXPECT_STREQ(pss->head->map_archive, "no");
  EXPECT_EQ(pss->head->recycle_enable, 0);
}

TEST(IsoShares, NamesCommentsAndPathsMayBeEscapedTwice) {
  mounted_images({{.name = "R&amp;amp;B",
                   .mount_path = "/mnt/isoMount/R&amp;amp;B",
                   .comment = "rhythm &amp;amp; blues &amp; more"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"R&B"});
  EXPECT_STREQ(pss->head->path, "/mnt/isoMount/R&B");
  EXPECT_STREQ(pss->head->comment, "rhythm & blues & more");
}

TEST(IsoShares, AccessListsAreTakenAsTheyStand) {
  mounted_images(
      {{.name = "Film", .read_list = "#R&amp;amp;B#,#a&amp;b#", .invalid_users = "#nobody#,#x&amp;amp;y#"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->read_list, "#R&amp;B#,#a&b#");
  EXPECT_STREQ(pss->head->invalid_users, "#nobody#,#x&amp;y#");
}

TEST(IsoShares, TheSerialIsTakenAsItStands) {
  mounted_images({{.name = "Film", .volume_raid = "3", .hd_serial = "WD&amp;amp;1"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->hd_serial, "WD&amp;1");
}

// The image itself cannot be written to.
TEST(IsoShares, AnImageWithoutAnyListIsOpenedLikeEveryOtherShare) {
  mounted_images({{.name = "Film", .read_list = ""}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->read_list, "");
  EXPECT_STREQ(pss->head->write_list, everyone);
  EXPECT_STREQ(pss->head->invalid_users, "");
  EXPECT_STREQ(pss->head->valid_users, everyone);
}

TEST(IsoShares, AnImageThatOnlyDeniesLetsNobodyIn) {
  mounted_images({{.name = "Film", .read_list = "", .invalid_users = "#carol#"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->write_list, "");
  EXPECT_STREQ(pss->head->invalid_users, "#nobody#,#carol#");
  EXPECT_STREQ(pss->head->valid_users, "#nobody#");
}

TEST(IsoShares, AnImageThatEveryoneReadsIsWrittenByNobody) {
  mounted_images({{.name = "Film", .read_list = everyone}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->read_list, everyone);
  EXPECT_STREQ(pss->head->write_list, "");
  EXPECT_STREQ(pss->head->valid_users, everyone);
}

TEST(IsoShares, AShareOfTheNameThatIsListedWins) {
  Insert_Smb_Node(Share{"Film"}.path("/mnt/HD/HD_a2/film").write("#bob#"));
  mounted_images({{.name = "Film"}, {.name = "film"}});
  read_first_volume();
  EXPECT_EQ(listed_shares(), (Names{"Film", "film"}));
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_a2/film");
  EXPECT_STREQ(pss->head->write_list, "#bob#");
}

TEST(IsoShares, TheFirstOfTwoImagesOfANameWins) {
  mounted_images({{.name = "Film", .mount_path = "/first"}, {.name = "Film", .mount_path = "/second"}});
  read_first_volume();
  EXPECT_EQ(listed_shares(), Names{"Film"});
  EXPECT_STREQ(pss->head->path, "/first");
}

TEST(IsoShares, AnImageWithoutANameIsNoShare) {
  mounted_images({{.name = ""}, {.name = "Film"}});
  read_first_volume();
  EXPECT_EQ(listed_shares(), Names{"Film"});
}

TEST(IsoShares, AMissingElementIsAnEmptyText) {
  read_first_volume(iso_catalogue_of("<item><name>Film</name></item>"));
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_EQ(pss->head->volume_raid, 0);
  EXPECT_STREQ(pss->head->hd_serial, "");
  EXPECT_STREQ(pss->head->comment, "");
  EXPECT_STREQ(pss->head->path, "");
  EXPECT_STREQ(pss->head->valid_users, everyone);
}

TEST(IsoShares, TextsThatJustFitAreTakenWhole) {
  const std::string name(511, 'n');
  const std::string path = "/" + std::string(4094, 'p');
  mounted_images({{.name = name,
                   .volume_raid = "3",
                   .hd_serial = std::string(511, 's'),
                   .mount_path = path,
                   .comment = std::string(511, 'c'),
                   .read_list = "#" + std::string(12285, 'u') + "#"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{name});
  EXPECT_EQ(pss->head->hd_serial, std::string(511, 's'));
  EXPECT_EQ(pss->head->path, path);
  EXPECT_EQ(pss->head->comment, std::string(511, 'c'));
  EXPECT_EQ(pss->head->read_list, "#" + std::string(12285, 'u') + "#");
}

TEST(IsoShares, LongerTextsAreCutAndLeaveTheirNeighboursAlone) {
  std::string list = "#alice#";
  while (list.size() <= 13000) {
    list += ",#member#";
  }
  mounted_images({{.name = std::string(600, 'n'),
                   .volume_raid = "3",
                   .hd_serial = std::string(600, 's'),
                   .mount_path = "/" + std::string(5000, 'p'),
                   .comment = std::string(20000, 'c'),
                   .read_list = list,
                   .invalid_users = "#bob#"}});
  read_first_volume();
  ASSERT_EQ(listed_shares(), Names{std::string(511, 'n')});
  EXPECT_EQ(pss->head->volume_raid, 3);
  EXPECT_EQ(pss->head->hd_serial, std::string(511, 's'));
  EXPECT_EQ(pss->head->comment, std::string(511, 'c'));
  EXPECT_EQ(pss->head->path, "/" + std::string(4094, 'p'));
  EXPECT_STREQ(pss->head->browseable, "yes");
  EXPECT_EQ(pss->head->read_list, list.substr(0, 7 + std::size_t{1364} * 9)) << "no half entry at the end";
  EXPECT_STREQ(pss->head->write_list, "");
  EXPECT_STREQ(pss->head->invalid_users, "#nobody#,#bob#");
}

// ---- The catalogue file

TEST(IsoShares, TheElementsAboveTheItemsMayHaveAnyName) {
  read_first_volume("<!-- of today --><images>\n<!-- none --><mounted>" + iso_item({.name = "Film"}) +
                    "</mounted></images>");
  EXPECT_EQ(listed_shares(), Names{"Film"});
}

TEST(IsoShares, OnlyTheFirstElementBelowTheRootHoldsItems) {
  read_first_volume("<config><count/><iso>" + iso_item({.name = "Film"}) + "</iso></config>");
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(IsoShares, WhatFollowsTheFirstItemIsReadWhateverItsName) {
  read_first_volume(iso_catalogue_of(
      "<image><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial><name>Early</name></image>" +
      iso_item({.name = "Film"}) +
      "<image><volume_raid>1</volume_raid><hd_serial>WD-1</hd_serial><name>Late</name></image>" +
      "<!-- a remark -->" + iso_item({.name = "Last"})));
  EXPECT_EQ(listed_shares(), (Names{"Film", "Late", "Last"}));
}

TEST(IsoShares, WithoutACatalogueThereIsNoShareAndNoWord) {
  Captured captured;
  set_single_disk(0, "WD-1");
  isoMount_readXml(0);
  EXPECT_EQ(captured.out() + captured.err(), "");
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(IsoShares, ABrokenCatalogueIsPassedOverWithoutAWord) {
  const std::string whole = iso_catalogue({Image{.name = "Film"}});
  const std::string texts[] = {"",
                               " \n",
                               "no XML",
                               whole.substr(0, whole.size() - 3),
                               whole + "<again/>",
                               "<config/>",
                               "<config>text</config>",
                               "<config><!-- empty --></config>",
                               "<config><iso/></config>",
                               "<config><iso>text</iso></config>",
                               "<config><iso><Item><name>Film</name></Item></iso></config>",
                               "<config><item><name>Film</name></item></config>",
                               iso_catalogue({Image{.name = "\xff"}}),
                               iso_catalogue({Image{.name = "&nothing;"}})};
  for (const std::string &text : texts) {
    SCOPED_TRACE(text);
    Captured captured;
    read_first_volume(text);
    EXPECT_EQ(captured.out() + captured.err(), "");
    EXPECT_EQ(listed_shares(), Names{});
  }
}

TEST(IsoShares, AFolderInPlaceOfTheCatalogueIsPassedOver) {
  Appliance{}.folder(iso_file);
  read_first_volume();
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(IsoShares, TheCatalogueStaysAsItIs) {
  Appliance{}.folder("/mnt/isoMount/film");
  mounted_images({{.name = "Film"}, {.name = "Foreign", .hd_serial = "WD-9"}});
  const std::string before = read_file(iso_file);
  set_array(4, "own");
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), (Names{"Film", "Foreign"}));
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(read_file(iso_file), before);
  EXPECT_EQ(names_in("/mnt/HD_a4/.systemfile"), Names{".iso_mount.xml"});
}

TEST(IsoShares, ManyImagesAreAllListed) {
  std::vector<Image> images;
  for (int i = 0; i < 300; ++i) {
    images.push_back({.name = "Film " + std::to_string(i)});
  }
  mounted_images(images);
  read_first_volume();
  ASSERT_EQ(pss->count, 300);
  EXPECT_STREQ(pss->tail->name, "Film 299");
}

// ---- Modes and volumes

TEST(IsoShares, InADomainTheDomainsCatalogueIsRead) {
  mounted_images({{.name = "Local"}});
  Appliance{}.file(domain_iso_file, iso_catalogue({Image{.name = "Domain"}}));
  pss->ads_enable = 1;
  read_first_volume();
  EXPECT_EQ(listed_shares(), Names{"Domain"});
}

TEST(IsoShares, AnyOtherModeReadsTheLocalCatalogue) {
  for (const int mode : {0, 2, -1}) {
    SCOPED_TRACE(mode);
    Free_All_List();
    mounted_images({{.name = "Local"}});
    Appliance{}.file(domain_iso_file, iso_catalogue({Image{.name = "Domain"}}));
    pss->ads_enable = mode;
    read_first_volume();
    EXPECT_EQ(listed_shares(), Names{"Local"});
  }
}

TEST(IsoShares, TheCatalogueLiesOnTheVolumesHiddenPartition) {
  set_single_disk(0, "WD-2");
  put(pss->vol_hidden_path[0], "/mnt/HD_b4");
  Appliance{}.file(iso_file_of_second, iso_catalogue({Image{.name = "Two", .hd_serial = "WD-2"}}));
  isoMount_readXml(0);
  EXPECT_EQ(listed_shares(), Names{"Two"});
}

TEST(IsoShares, OnlyPresentVolumesAreRead) {
  an_image_on_each_disk();
  const struct {
    int first, second;
    Names names;
  } rows[] = {
      {1, 1, {"One", "Two"}}, {0, 1, {"Two"}}, {1, 0, {"One"}}, {0, 0, {}}, {2, 1, {"Two"}}, {1, -1, {"One"}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::to_string(row.first) + " " + std::to_string(row.second));
    Free_All_List();
    pss->vol_present[0] = row.first;
    pss->vol_present[1] = row.second;
    create_iso_share();
    EXPECT_EQ(listed_shares(), row.names);
  }
}

TEST(IsoShares, AVolumeIsReadByItsNumberWhetherPresentOrNot) {
  an_image_on_each_disk();
  pss->vol_present[1] = 0;
  isoMount_readXml(1);
  EXPECT_EQ(listed_shares(), Names{"Two"});
}

TEST(IsoShares, ThereIsNoThirdVolume) {
  for (const int volume : {-1, 2, 1000000}) {
    expect_silence([volume] { isoMount_readXml(volume); });
  }
  EXPECT_EQ(listed_shares(), Names{});
}

TEST(IsoShares, TheImagesComeBehindTheListedShares) {
  Insert_Smb_Node(Share{"Music"}.path("/mnt/HD/HD_a2/Music"));
  an_image_on_each_disk();
  create_iso_share();
  EXPECT_EQ(listed_shares(), (Names{"Music", "One", "Two"}));
}

// ---- Debug output

TEST(IsoShares, TheFileAndEveryEntryArePrintedForAnyDebugFlagButZero) {
  mounted_images({{.name = "Film"}, {.name = "Foreign", .hd_serial = "WD-9"}, {"Mirror", "4", "UUID=x"}});
  set_single_disk(0, "WD-1");
  const auto read = [] {
    Free_All_List();
    isoMount_readXml(0);
  };
  expect_listing(read, "read xml path = /mnt/HD_a4/.systemfile/.iso_mount.xml\n"
                       "p->volume_raid = 1\n"
                       "current_raid_type = 1\n"
                       "p->volume_raid = 1\n"
                       "current_raid_type = 1\n"
                       "###file serial = WD-9\n"
                       "###hd serial = WD-1\n"
                       "p->volume_raid = 4\n"
                       "current_raid_type = 1\n");
}

TEST(IsoShares, TheFileIsPrintedEvenWhereThereIsNone) {
  an_image_on_each_disk();
  Appliance{}.remove(iso_file).remove(iso_file_of_second);
  expect_listing(create_iso_share, "read xml path = /mnt/HD_a4/.systemfile/.iso_mount.xml\n"
                                   "read xml path = /mnt/HD_b4/.systemfile/.iso_mount.xml\n");
}

TEST(IsoShares, InADomainTheDomainsFileIsPrinted) {
  set_single_disk(0, "WD-1");
  pss->ads_enable = 1;
  expect_listing([] { isoMount_readXml(0); }, "read xml path = /mnt/HD_a4/.systemfile/.iso_mount_ads.xml\n");
}

// ---- With everything else

TEST(IsoShares, AnImageOfADiskThatBecameAMirrorIsPublished) {
  Appliance::mirror().folder("/mnt/isoMount/film");
  mounted_images({{.name = "Film", .hd_serial = "WD-TESTDISK0001"}});
  get_samba_info();
  create_iso_share();
  ASSERT_EQ(listed_shares(), Names{"Film"});
  EXPECT_EQ(pss->head->volume_raid, 4);
  EXPECT_STREQ(pss->head->hd_serial, "UUID=7cc3a0e9:85fa470b:aecd3d11:561a7e11");
  ASSERT_EQ(create_smb_conf(), 0);
  EXPECT_NE(read_file(smb_conf).find("\n[ Film ]\n"), std::string::npos);
  EXPECT_EQ(transcript().find("smbcom"), std::string::npos);
}

} // namespace
} // namespace nasshare::tests
