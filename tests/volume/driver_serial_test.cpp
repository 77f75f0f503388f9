// A disk's serial number from the appliance's own driver: 20 characters, last one first.
#include "appliance.h"
#include "nasshare/volume.h"
#include "own_table.h"
#include "unopenable.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

using Serial = std::array<char, 512>;

std::string serial_of(int bay) {
  Serial serial{};
  get_serial_number2(serial.data(), bay);
  return serial.data();
}

TEST(DriverSerial, RequestCarriesTheCommandAndTheBay) {
  serial_of(0);
  serial_of(1);
  EXPECT_EQ(kernel_requests(), "SIOCDEVPRIVATE egiga0 2 0\nSIOCDEVPRIVATE egiga0 2 1\n");
}

TEST(DriverSerial, ComesBackInReadingOrderWithoutBlanks) {
  const struct {
    const char *answer;
    const char *serial;
  } rows[] = {
      {"TSRQPONMLKJIHGFEDCBA", "ABCDEFGHIJKLMNOPQRST"},
      {"     1000KSIDTSET-DW", "WD-TESTDISK0001"},
      {"1000KSIDTSET-DW     ", "WD-TESTDISK0001"},
      {" 1 0 0 0 K S I D-D W", "WD-DISK0001"},
      {"                    ", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.answer);
    Appliance{}.driver_serial(0, row.answer);
    EXPECT_EQ(serial_of(0), row.serial);
  }
}

TEST(DriverSerial, EachBayHasItsOwn) {
  Appliance{}.driver_serial(0, "                 ORE").driver_serial(1, "                 ENO");
  EXPECT_EQ(serial_of(0), "ERO");
  EXPECT_EQ(serial_of(1), "ONE");
}

TEST(DriverSerial, IsEmptyWithoutTheDriver) {
  EXPECT_EQ(serial_of(0), "");
  EXPECT_EQ(serial_of(1), "");
}

TEST(DriverSerial, FillsTheFirst32BytesOnly) {
  Appliance{}.driver_serial(1, "                 ENO");
  Serial field;
  field.fill('x');
  get_serial_number2(field.data(), 1);
  Serial expected;
  expected.fill('x');
  std::ranges::fill_n(expected.begin(), 32, '\0');
  std::ranges::copy_n("ONE", 3, expected.begin());
  EXPECT_EQ(field, expected);
}

TEST(DriverSerial, DestinationIsLeftAloneWhereNoSocketCanBeMade) {
  Appliance{}.driver_serial(0, "                 ORE");
  Serial field{"before"};
  {
    const DescriptorLimit none(0);
    get_serial_number2(field.data(), 0);
  }
  EXPECT_EQ(field, Serial{"before"});
  EXPECT_EQ(kernel_requests(), "");
}

TEST(DriverSerial, SocketIsClosed) {
  Appliance{}.driver_serial(0, "                 ORE");
  const DescriptorLimit few(4);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(serial_of(0), "ERO");
  }
}

TEST(DriverSerial, MissingDestinationAsksNothing) {
  get_serial_number2(nullptr, 0);
  EXPECT_EQ(kernel_requests(), "");
}

} // namespace
} // namespace nasshare::tests
