// /etc/nsswitch.conf, in its local and its domain form.
#include "../support/unopenable.h"
#include "domain_settings.h"
#include "nasshare/ads.h"
#include "nasshare/support.h"
#include "output.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

constexpr const char *nsswitch_conf = "/etc/nsswitch.conf";

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
  smb_dbg_flag = 1;
  Captured captured;
  ads_create_nsswitch_conf();
  EXPECT_EQ(captured.out() + captured.err(), "");
}

TEST(NsswitchConf, WritingItPrintsNothing) {
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { ads_create_nsswitch_conf(); }), "");
  }
}

TEST(PamEntryPoint, GivesItsArgumentBackAndWritesNothing) {
  const auto before = names_in("/etc/pam.d");
  for (const int value : {0, 1, -1, 2147483647}) {
    EXPECT_EQ(ads_create_pam_samba(value), value);
  }
  EXPECT_EQ(names_in("/etc/pam.d"), before);
}

} // namespace
} // namespace nasshare::tests
