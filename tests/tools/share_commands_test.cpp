// nasshare list, show, add, modify, delete, check and allows: what they store, print and refuse.
#include "nasshare_cli.h"
#include "share.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace nasshare::tests {
namespace {

// ---- list, show

TEST_F(Nasshare, ListIsEmptyWithoutShares) {
  const Ended ended = nasshare({"list"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "");
}

TEST_F(Nasshare, ListPrintsNamePathAndComment) {
  add({"Music", "/mnt/HD/HD_a2/music", "--comment", "R&B, <soul>"});
  add({"My Photos", "/mnt/HD/HD_b2/photos"});
  EXPECT_EQ(nasshare({"list"}).out,
            "Music\t/mnt/HD/HD_a2/music\tR&B, <soul>\nMy Photos\t/mnt/HD/HD_b2/photos\t\n");
}

TEST_F(Nasshare, ShowPrintsEverythingAboutAShare) {
  add({"Music", "/mnt/HD/HD_a2/music", "--comment", "Mine", "--read", "bob", "--write", "alice,@staff",
       "--deny", "carol", "--recycle", "tree", "--oplocks", "no", "--map-archive", "yes"});
  EXPECT_EQ(nasshare({"show", "Music"}).out, "name         Music\n"
                                             "comment      Mine\n"
                                             "path         /mnt/HD/HD_a2/music\n"
                                             "read         bob\n"
                                             "write        alice,@staff\n"
                                             "deny         nobody,carol\n"
                                             "recycle      tree\n"
                                             "oplocks      no\n"
                                             "map-archive  yes\n");
}

TEST_F(Nasshare, ShowOfAnUnknownShareIsRefused) {
  expect_refusal({"show", "Music"}, "no share is named \"Music\"");
}

// ---- add

TEST_F(Nasshare, AddStoresTheShareOnEveryVolume) {
  add({"Music", "/mnt/HD/HD_a2/music", "--comment", "Mine", "--read", "bob", "--write", "alice,@staff",
       "--recycle", "flat"});
  expect_on_both_volumes(share_xml({stored_share("Music")
                                        .comment("Mine")
                                        .path("/mnt/HD/HD_a2/music")
                                        .read("#bob#")
                                        .write("#alice#,#@staff#")
                                        .deny("#nobody#")
                                        .recycle(1)
                                        .on_array(4, "7cc3a0e9:85fa470b:aecd3d11:561a7e11")}));
}

TEST_F(Nasshare, AddHasTheServiceTakeTheChange) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST_F(Nasshare, AddWithoutListsIsOpenToEveryone) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(shown("Music", "write"), "everyone");
  EXPECT_EQ(shown("Music", "deny"), "");
}

TEST_F(Nasshare, AddTakesEveryoneAndNobody) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "everyone", "--write", "alice"});
  EXPECT_EQ(shown("Music", "read"), "everyone");
  add({"Docs", "/mnt/HD/HD_a2/docs", "--read", "nobody,alice"});
  EXPECT_EQ(shown("Docs", "read"), "nobody,alice");
}

TEST_F(Nasshare, AddOfATakenNameIsRefused) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/docs"}, "the name \"Music\" is taken");
  EXPECT_EQ(shown("Music", "path"), "/mnt/HD/HD_a2/music");
}

TEST_F(Nasshare, AddOfAFolderThatIsNotThereIsRefused) {
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/none"}, "no such folder: /mnt/HD/HD_a2/none");
  machine_.file("/mnt/HD/HD_a2/file", "");
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/file"}, "no such folder: /mnt/HD/HD_a2/file");
}

TEST_F(Nasshare, AddOfAFolderOnNoVolumeIsRefused) {
  machine_.folder("/mnt/HD/HD_a2x").folder("/home/music");
  for (const std::string path : {"/home/music", "/mnt/HD/HD_a2x", "/mnt"}) {
    expect_refusal({"add", "Music", path}, path + " is on no data volume (/mnt/HD/HD_a2, /mnt/HD/HD_b2)");
  }
}

TEST_F(Nasshare, AddOfAPathThatLeavesItsVolumeIsRefused) {
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/../../../etc"},
                 "/mnt/HD/HD_a2/../../../etc is on no data volume (/mnt/HD/HD_a2, /mnt/HD/HD_b2)");
}

TEST_F(Nasshare, AddStoresThePathAsItIsFoundAgain) {
  add({"Music", "/mnt/./HD//HD_a2/docs/../music"});
  EXPECT_EQ(shown("Music", "path"), "/mnt/HD/HD_a2/music");
}

TEST_F(Nasshare, AddOfAPathThatSambaReadsAsAnotherIsRefused) {
  for (const std::string path : {"/mnt/HD/HD_a2/music ", "/mnt/HD/HD_a2/music\\", "/mnt/HD/HD_a2/music\""}) {
    machine_.folder(path);
    for (const char *end : {"", "/", "//"}) {
      expect_refusal({"add", "Music", path + end},
                     "Samba would serve another folder for a path that ends in a "
                     "blank, a backslash or a double quote");
    }
  }
}

// Stored, a record that was loaded without accounts would let in who is denied.
TEST_F(Nasshare, NothingIsShownOrModifiedWhileAccountsCannotBeRead) {
  add({"Music", "/mnt/HD/HD_a2/music", "--write", "@staff", "--deny", "bob"});
  const std::string passwd = read_file("/etc/passwd");
  machine_.remove("/etc/passwd");
  const std::string refusal = "settings or accounts cannot be read, so lists may be short; try again";
  expect_refusal({"show", "Music"}, refusal);
  expect_refusal({"modify", "Music", "--comment", "hello"}, refusal);
  const Ended listed = nasshare({"list"});
  EXPECT_EQ(listed.status, refused);
  EXPECT_EQ(listed.err, "nasshare: not everything can be read: shares may be missing\n");
  machine_.file("/etc/passwd", passwd);
  EXPECT_EQ(shown("Music", "deny"), "nobody,bob");
  EXPECT_EQ(nasshare({"list"}).status, 0);
}

TEST_F(Nasshare, AUsbDisksShareIsRefused) {
  machine_.mount("/dev/sdc1", "/mnt/USB/HD_c1").shared_name("USBStick = HD_c1\n");
  const std::string refusal =
      "the share \"USBStick\" is a USB disk's: it comes and goes with the disk, open to everyone";
  expect_refusal({"modify", "USBStick", "--deny", "alice"}, refusal);
  expect_refusal({"delete", "USBStick"}, refusal);
  expect_refusal({"add", "USBDisk1_2", "/mnt/HD/HD_a2/music"},
                 "names with \"USBDisk1\" are those of USB disks");
}

TEST_F(Nasshare, AddOfATextThatComesBackAsAnotherIsRefused) {
  machine_.folder("/mnt/HD/HD_a2/a&b").folder("/mnt/HD/HD_a2/a&amp;b");
  const std::string path = "/mnt/HD/HD_a2/a&b";
  expect_refusal({"add", "a&amp;b", path}, "the name holds \"&amp;\", which would come back as \"&\"");
  expect_refusal({"add", "a&b", "/mnt/HD/HD_a2/a&amp;b"},
                 "the path holds \"&amp;\", which would come back as \"&\"");
  expect_refusal({"add", "a&b", path, "--comment", "&amp;"},
                 "the comment holds \"&amp;\", which would come back as \"&\"");
  add({"a&b", path, "--comment", "&lt;"});
  expect_refusal({"modify", "a&b", "--path", "/mnt/HD/HD_a2/a&amp;b"},
                 "the path holds \"&amp;\", which would come back as \"&\"");
  EXPECT_EQ(nasshare({"list"}).out, "a&b\t/mnt/HD/HD_a2/a&b\t&lt;\n");
}

TEST_F(Nasshare, AddOfANameThatSambaCannotTakeIsRefused) {
  const std::string path = "/mnt/HD/HD_a2/music";
  for (const std::string name :
       {"global", "Globals", "Homes", "printers", "glo bal", "IPC$", "dfs", "Recycle Bin - Volume_1"}) {
    expect_refusal({"add", name, path}, "Samba keeps the name \"" + name + "\" for itself");
  }
  for (const char *name : {" a", "a ", "a  b"}) {
    expect_refusal({"add", name, path},
                   "Samba drops blanks at the ends of a share's name, and all but one of several");
  }
  expect_refusal({"add", "a]b", path}, "a share's name cannot hold \"]\"");
  expect_refusal({"add", "a\nb", path}, "the name holds a line end or another control character");
  expect_refusal({"add", "", path}, "the name is empty");
}

TEST_F(Nasshare, AddOfALineEndInTheCommentIsRefused) {
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/music", "--comment", "a\npath = /"},
                 "the comment holds a line end or another control character");
}

TEST_F(Nasshare, AddOfATextThatDoesNotFitIsRefused) {
  const std::string path = "/mnt/HD/HD_a2/music";
  add({std::string(511, 'n'), path, "--comment", std::string(511, 'c')});
  expect_refusal({"add", std::string(512, 'n'), path}, "the name is longer than 511 bytes");
  expect_refusal({"add", "Music", path, "--comment", std::string(512, 'c')},
                 "the comment is longer than 511 bytes");
}

TEST_F(Nasshare, AddOfATextThatXmlCannotHoldIsRefused) {
  expect_refusal({"add", "M\xff", "/mnt/HD/HD_a2/music"}, "the share \"M\xff\" was not added");
  EXPECT_EQ(nasshare({"list"}).out, "");
}

TEST_F(Nasshare, AddOfAnUnknownAccountIsRefused) {
  const std::string path = "/mnt/HD/HD_a2/music";
  expect_refusal({"add", "Music", path, "--read", "alice,dave"}, "no user is named \"dave\"");
  expect_refusal({"add", "Music", path, "--write", "@crew"}, "no group is named \"crew\"");
}

TEST_F(Nasshare, AddOfAMalformedListIsRefused) {
  const std::string path = "/mnt/HD/HD_a2/music";
  for (const std::string list : {"alice,,bob", ",", "alice,", "@", "alice,@"}) {
    expect_refusal({"add", "Music", path, "--read", list}, "the list has an entry without a name");
  }
  for (const std::string entry : {" alice", "alice ", "a#b", "a\"b", "a\tb"}) {
    expect_refusal({"add", "Music", path, "--read", entry}, "no account can be named \"" + entry + "\"");
  }
}

TEST_F(Nasshare, AddOfAListThatDoesNotFitIsRefused) {
  const std::string list = "alice" + repeated(",alice", 2048);
  expect_refusal({"add", "Music", "/mnt/HD/HD_a2/music", "--read", list},
                 "--read is longer than 12287 bytes");
}

// ---- modify

TEST_F(Nasshare, ModifyKeepsWhatIsNotGiven) {
  add({"Music", "/mnt/HD/HD_a2/music", "--comment", "R&B", "--read", "bob", "--write", "alice", "--recycle",
       "tree", "--oplocks", "no"});
  EXPECT_EQ(nasshare({"modify", "Music", "--read", "@staff"}).status, 0);
  EXPECT_EQ(nasshare({"show", "Music"}).out, "name         Music\n"
                                             "comment      R&B\n"
                                             "path         /mnt/HD/HD_a2/music\n"
                                             "read         @staff\n"
                                             "write        alice\n"
                                             "deny         nobody\n"
                                             "recycle      tree\n"
                                             "oplocks      no\n"
                                             "map-archive  no\n");
}

TEST_F(Nasshare, ModifyTakesEveryOption) {
  add({"Music", "/mnt/HD/HD_a2/music", "--recycle", "tree"});
  EXPECT_EQ(nasshare({"modify", "Music", "--path", "/mnt/HD/HD_b2/photos", "--comment", "c", "--read", "bob",
                      "--write", "alice", "--deny", "carol", "--recycle", "off", "--oplocks", "no",
                      "--map-archive", "yes"})
                .status,
            0);
  EXPECT_EQ(shown("Music", "path"), "/mnt/HD/HD_b2/photos");
  EXPECT_EQ(shown("Music", "deny"), "nobody,carol");
  EXPECT_EQ(shown("Music", "recycle"), "off");
}

TEST_F(Nasshare, ModifyOpensAShareToEveryoneGuestsIncluded) {
  add({"Music", "/mnt/HD/HD_a2/music", "--write", "alice"});
  EXPECT_EQ(shown("Music", "deny"), "nobody");
  EXPECT_EQ(nasshare({"modify", "Music", "--write", "everyone"}).status, 0);
  EXPECT_EQ(shown("Music", "write"), "everyone");
  EXPECT_EQ(shown("Music", "deny"), "");
}

TEST_F(Nasshare, ModifyToEveryoneButTheDeniedNamesTheOthers) {
  add({"Music", "/mnt/HD/HD_a2/music", "--write", "alice"});
  EXPECT_EQ(nasshare({"modify", "Music", "--write", "everyone", "--deny", "carol"}).status, 0);
  EXPECT_EQ(shown("Music", "write"), "alice,bob");
  EXPECT_EQ(shown("Music", "deny"), "nobody,carol");
}

TEST_F(Nasshare, ModifyCanEmptyAList) {
  add({"Music", "/mnt/HD/HD_a2/music", "--read", "bob", "--write", "alice"});
  EXPECT_EQ(nasshare({"modify", "Music", "--read", ""}).status, 0);
  EXPECT_EQ(shown("Music", "read"), "");
  EXPECT_EQ(shown("Music", "write"), "alice");
}

TEST_F(Nasshare, ModifyOfAnUnknownShareIsRefused) {
  expect_refusal({"modify", "Music", "--read", "bob"}, "no share is named \"Music\"");
}

// ---- delete, check, allows

TEST_F(Nasshare, DeleteRemovesTheShareAndKeepsItsFolder) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(nasshare({"delete", "Music"}).status, 0);
  EXPECT_EQ(nasshare({"list"}).out, "");
  EXPECT_TRUE(exists("/mnt/HD/HD_a2/music"));
}

TEST_F(Nasshare, DeleteOfAnUnknownShareIsRefused) {
  expect_refusal({"delete", "Music"}, "no share is named \"Music\"");
}

TEST_F(Nasshare, CheckAnswersWhetherANameIsFree) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(nasshare({"check", "Docs"}).out, "free\n");
  EXPECT_EQ(nasshare({"check", "Docs"}).status, 0);
  EXPECT_EQ(nasshare({"check", "Music"}).out, "taken\n");
  EXPECT_EQ(nasshare({"check", "Music"}).status, refused);
}

TEST_F(Nasshare, CheckWithAPathAcceptsTheShareThatHasIt) {
  add({"Music", "/mnt/HD/HD_a2/music"});
  EXPECT_EQ(nasshare({"check", "Docs", "/mnt/HD/HD_a2/docs"}).out, "free\n");
  EXPECT_EQ(nasshare({"check", "Music", "/mnt/HD/HD_a2/music"}).out, "taken with this path\n");
  EXPECT_EQ(nasshare({"check", "Music", "/mnt/HD/HD_a2/music"}).status, 0);
  EXPECT_EQ(nasshare({"check", "Music", "/mnt/HD/HD_a2/docs"}).out, "taken with another path\n");
  EXPECT_EQ(nasshare({"check", "Music", "/mnt/HD/HD_a2/docs"}).status, refused);
}

TEST_F(Nasshare, AllowsAnswersForUsersAndGroups) {
  for (const auto &[list, account] : {std::pair("alice", "alice"), std::pair("@staff", "bob"),
                                      std::pair("@staff", "@staff"), std::pair("everyone", "carol")}) {
    const Ended ended = nasshare({"allows", list, account});
    EXPECT_EQ(ended.out, "yes\n") << list << " " << account;
    EXPECT_EQ(ended.status, 0);
  }
  for (const auto &[list, account] :
       {std::pair("alice", "bob"), std::pair("@staff", "carol"), std::pair("", "alice")}) {
    const Ended ended = nasshare({"allows", list, account});
    EXPECT_EQ(ended.out, "no\n") << list << " " << account;
    EXPECT_EQ(ended.status, refused);
  }
}

} // namespace
} // namespace nasshare::tests
