// The spool folder lies on the first hidden system partition.
#include "appliance.h"
#include "nasshare/smbconf.h"
#include "share.h"
#include "smb_conf.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string printer_section() {
  char *text = nullptr;
  std::size_t size = 0;
  FILE *file = open_memstream(&text, &size);
  determine_printer_in_hidden(file);
  std::fclose(file);
  std::string result(text, size);
  std::free(text);
  return result;
}

std::string section_at(const std::string &folder) {
  return "[ printers ]\npath = " + folder +
         "/.lpd\nguest ok = yes\nprintable = yes\nuse client driver = yes\nbrowseable = no\n\n";
}

TEST(PrinterSection, NamesTheFirstHiddenFolder) {
  Appliance{}.folder("/mnt/HD_b4").folder("/mnt/HD_a4");
  EXPECT_EQ(printer_section(), section_at("/mnt/HD_a4"));
}

TEST(PrinterSection, IsAbsentWithoutAHiddenFolder) {
  EXPECT_EQ(printer_section(), "");
  Appliance{}.folder("/mnt/HD/HD_a2").folder("/mnt/USB").folder("/mnt/hd_a4").folder("/mnt/.HD_a4");
  EXPECT_EQ(printer_section(), "");
  Appliance{}.remove("/mnt/HD").remove("/mnt/USB").remove("/mnt/hd_a4").remove("/mnt/.HD_a4");
  EXPECT_EQ(printer_section(), "");
}

TEST(PrinterSection, SkipsAFolderThatIsNotThere) {
  Appliance{}.link("/nowhere", "/mnt/HD_a4").folder("/mnt/HD_b4").folder("/mnt/HD_c4");
  EXPECT_EQ(printer_section(), section_at("/mnt/HD_b4"));
}

TEST(PrinterSection, IsAbsentWhenNoHiddenFolderIsThere) {
  Appliance{}.link("/nowhere", "/mnt/HD_a4");
  EXPECT_EQ(printer_section(), "");
}

TEST(PrinterSection, TakesAnyEntryThatBeginsLikeAHiddenFolder) {
  Appliance{}.file("/mnt/HD_", "");
  EXPECT_EQ(printer_section(), section_at("/mnt/HD_"));
}

TEST(PrinterSection, TakesALongNameWhole) {
  const std::string name = "/mnt/HD_" + std::string(252, 'x');
  Appliance{}.folder(name);
  EXPECT_EQ(printer_section(), section_at(name));
}

TEST(PrinterSection, StandsBetweenTheGlobalSectionAndTheShares) {
  Appliance{}.folder("/mnt/HD_a4");
  Insert_Smb_Node(Share{"Music"});
  const std::string start = section_at("/mnt/HD_a4") + "[ Music ]\n";
  EXPECT_EQ(generated_sections().substr(0, start.size()), start);
}

TEST(PrinterSection, NeedsAFile) {
  Appliance{}.folder("/mnt/HD_a4");
  determine_printer_in_hidden(nullptr);
  EXPECT_EQ(printer_section(), section_at("/mnt/HD_a4"));
}

} // namespace
} // namespace nasshare::tests
