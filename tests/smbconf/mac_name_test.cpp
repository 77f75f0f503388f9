// Get_Mac_Str: the default NetBIOS name out of the hardware address.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/smbconf.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

std::string name_for(const std::string &hardware_address) {
  Appliance{}.hardware_address(hardware_address);
  char name[32] = "";
  Get_Mac_Str(name);
  return name;
}

TEST(MacName, HasTheLastThreeBytesInHexadecimalWithoutPadding) {
  const struct {
    const char *address;
    const char *name;
  } rows[] = {
      {"02:00:00:0a:1b:02", "tarvo-a1b2"},   {"02:00:00:00:01:0f", "tarvo-01f"},
      {"02:00:00:00:00:00", "tarvo-000"},    {"02:00:00:ff:ff:ff", "tarvo-ffffff"},
      {"02:00:00:80:7f:90", "tarvo-807f90"}, {"02:00:00:01:12:03", "tarvo-1123"},
      {"02:00:00:11:02:03", "tarvo-1123"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.address);
    EXPECT_EQ(name_for(row.address), row.name);
  }
}

TEST(MacName, IsAllZerosWhenTheInterfaceDoesNotAnswer) {
  Appliance{};
  char name[32] = "as it was";
  Get_Mac_Str(name);
  EXPECT_STREQ(name, "tarvo-000");
  EXPECT_EQ(kernel_requests(), "SIOCGIFHWADDR egiga0\n");
}

TEST(MacName, FitsSixteenBytes) {
  Appliance{}.hardware_address("02:00:00:ff:ff:ff");
  char field[17] = "0123456789abcdef";
  Get_Mac_Str(field);
  EXPECT_STREQ(field, "tarvo-ffffff");
  EXPECT_EQ(std::string(field + 13, 3), "def");
}

TEST(MacName, WithoutASocketIsReportedAndTheDestinationStays) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  const auto get = [] {
    char name[32] = "as it was";
    {
      const DescriptorLimit none(0);
      Get_Mac_Str(name);
    }
    EXPECT_STREQ(name, "as it was");
  };
  expect_output(get, [](int /*flag*/) { return "IOCTL API: Create socket fail\n"; });
  EXPECT_EQ(kernel_requests(), "");
}

TEST(MacName, PrintsNothingOtherwise) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  char name[32] = "";
  expect_silence([&name] { Get_Mac_Str(name); });
}

TEST(MacName, WithoutADestinationIsNothing) {
  Appliance{};
  expect_silence([] { Get_Mac_Str(nullptr); });
}

} // namespace
} // namespace nasshare::tests
