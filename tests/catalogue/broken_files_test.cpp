// A file that a failing disk has damaged loads nothing, but what is left of it is not written over.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

const std::string kept_aside = std::string(first_share_file) + ".bad";

const std::string damaged = "<config><samba><item><name>Mus\x01c</name></item></samba></config>";

Appliance with(const std::string &text) {
  return Appliance::single_disks().folder("/mnt/HD/HD_a2/new").shares("/mnt/HD_a4", text);
}

void change() {
  EXPECT_EQ(add_share(Share{"New"}.path("/mnt/HD/HD_a2/new")), 1);
  EXPECT_NE(read_file(first_share_file).find("<name>New</name>"), std::string::npos);
}

TEST(BrokenShareXml, IsKeptAsideByTheFirstChange) {
  with(damaged);
  change();
  EXPECT_EQ(read_file(kept_aside), damaged);
  EXPECT_EQ(del_share("New"), 1);
  EXPECT_EQ(read_file(kept_aside), damaged);
}

TEST(BrokenShareXml, IsKeptBesideEarlierOnes) {
  with(damaged).file(kept_aside, "earlier");
  change();
  EXPECT_EQ(read_file(kept_aside), "earlier");
  EXPECT_EQ(read_file(kept_aside + "2"), damaged);
}

// The link would lead to the successor.
TEST(BrokenShareXml, IsNotKeptByALinkOfThatName) {
  with(damaged).link(first_share_file, kept_aside);
  change();
  EXPECT_EQ(read_file(kept_aside + "2"), damaged);
}

TEST(BrokenShareXml, TakesThePlaceOfTheNinth) {
  auto machine = with(damaged).file(kept_aside, "earlier");
  for (const char *number : {"2", "3", "4", "5", "6", "7", "8", "9"}) {
    machine.file(kept_aside + number, "earlier");
  }
  change();
  EXPECT_EQ(read_file(kept_aside + "8"), "earlier");
  EXPECT_EQ(read_file(kept_aside + "9"), damaged);
}

TEST(BrokenShareXml, IsKnownByAnItemHoweverItIsWritten) {
  const std::string torn = "<config><samba><item ><name>Music</name></item >";
  with(torn);
  change();
  EXPECT_EQ(read_file(kept_aside), torn);
}

TEST(BrokenShareXml, IsNotKeptByAQuestion) {
  with(damaged);
  EXPECT_EQ(chk_share("Music"), 1);
  EXPECT_EQ(names_in(first_hidden_folder), Names{".smb.xml"});
}

TEST(SoundShareXml, IsNotKeptAside) {
  for (const char *text : {"", "<config/>", "<?xml version=\"1.0\"?><config><samba/></config>"}) {
    with(text);
    change();
    EXPECT_EQ(names_in(first_hidden_folder), Names{".smb.xml"}) << text;
  }
}

// Ten levels of ten references are ten thousand million characters.
TEST(BrokenShareXml, IsAFileThatDeclaresEntities) {
  std::string text = "<!DOCTYPE config [<!ENTITY e0 'aaaaaaaaaa'>";
  for (int level = 1; level < 10; ++level) {
    text += "<!ENTITY e" + std::to_string(level) + " '";
    for (int i = 0; i < 10; ++i) {
      text += "&e" + std::to_string(level - 1) + ";";
    }
    text += "'>";
  }
  text += "]><config><samba><item><volume_raid>1</volume_raid><hd_serial>WD-TESTDISK0001</hd_serial>"
          "<name>Music</name><comment>&e9;</comment><path>/mnt/HD/HD_a2/new</path></item></samba></config>";
  with(text);
  EXPECT_EQ(chk_share("Music"), 1);
  change();
  EXPECT_EQ(read_file(kept_aside), text);
}

} // namespace
} // namespace nasshare::tests
