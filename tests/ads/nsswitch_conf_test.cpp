// /etc/nsswitch.conf, in its local and its domain form.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "unopenable.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *local_form = "passwd:     files\n"
                                   "shadow:     files\n"
                                   "group:      files\n"
                                   "hosts:      files dns\n"
                                   "ethers:     files\n"
                                   "netmasks:   files\n"
                                   "networks:   files\n"
                                   "protocols:  files\n"
                                   "services:   files\n";

constexpr const char *domain_form = "passwd:     files winbind\n"
                                    "shadow:     files\n"
                                    "group:      files winbind\n"
                                    "hosts:      dns files\n"
                                    "ethers:     files\n"
                                    "netmasks:   files\n"
                                    "networks:   files\n"
                                    "protocols:  files\n"
                                    "services:   files\n";

std::string written_for(std::int32_t mode) {
  smbshare.ads_enable = mode;
  ads_create_nsswitch_conf();
  return read_file(nsswitch_conf);
}

TEST(NsswitchConf, OfLocalMode) {
  EXPECT_EQ(written_for(0), local_form);
}

TEST(NsswitchConf, OfDomainMode) {
  EXPECT_EQ(written_for(1), domain_form);
}

TEST(NsswitchConf, EveryNonZeroModeIsTheDomains) {
  EXPECT_EQ(written_for(2), domain_form);
  EXPECT_EQ(written_for(-1), domain_form);
}

TEST(NsswitchConf, ReplacesALongerFileInPlace) {
  Appliance{}.file(nsswitch_conf, std::string(5000, 'x'), 0640);
  EXPECT_EQ(written_for(1), domain_form);
  EXPECT_EQ(written_for(0), local_form);
  EXPECT_EQ(mode(nsswitch_conf), 0640U);
}

TEST(NsswitchConf, ThatIsMissingIsMade) {
  Appliance{}.remove(nsswitch_conf);
  EXPECT_EQ(written_for(0), local_form);
}

TEST(NsswitchConf, ThatCannotBeOpenedIsSkippedSilently) {
  Appliance{}.remove(nsswitch_conf);
  make_unopenable(nsswitch_conf);
  expect_silence(ads_create_nsswitch_conf);
}

TEST(NsswitchConf, WritingItPrintsNothing) {
  expect_silence(ads_create_nsswitch_conf);
}

} // namespace
} // namespace nasshare::tests
