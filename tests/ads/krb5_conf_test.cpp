// /etc/krb5.conf, written whole from the settings.
#include "appliance.h"
#include "debug_output.h"
#include "domain.h"
#include "fields.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace nasshare::tests {
namespace {

std::string written() {
  ads_create_krb5_conf();
  return read_file(krb5_conf);
}

std::string krb5_conf_of(const std::string &realm, const std::string &server) {
  return "[logging]\n"
         "        default = FILE:/var/log/krb5.log\n"
         "\n"
         "[libdefaults]\n"
         "      default_realm = " +
         realm +
         "\n"
         "      ticket_lifetime = 24000\n"
         "      clock_skew = 300\n"
         "\n"
         "[realms]\n"
         "      " +
         realm +
         " = {\n"
         "      kdc = " +
         server +
         ":88\n"
         "      admin_server = " +
         server +
         ":749\n"
         "      default_domain = " +
         realm +
         "\n"
         "      }\n"
         "\n"
         "[domain_realms]\n"
         "      .example.com = " +
         realm +
         "\n"
         "      example.com = " +
         realm + "\n\n";
}

TEST(Krb5Conf, IsWrittenFromTheSettings) {
  in_a_domain();
  EXPECT_EQ(written(), "[logging]\n"
                       "        default = FILE:/var/log/krb5.log\n"
                       "\n"
                       "[libdefaults]\n"
                       "      default_realm = CORP.LAN\n"
                       "      ticket_lifetime = 24000\n"
                       "      clock_skew = 300\n"
                       "\n"
                       "[realms]\n"
                       "      CORP.LAN = {\n"
                       "      kdc = dc1:88\n"
                       "      admin_server = dc1:749\n"
                       "      default_domain = CORP.LAN\n"
                       "      }\n"
                       "\n"
                       "[domain_realms]\n"
                       "      .example.com = CORP.LAN\n"
                       "      example.com = CORP.LAN\n"
                       "\n");
}

TEST(Krb5Conf, TakesTheSettingsAsTheyAre) {
  in_a_domain();
  for (const auto &[realm, server] :
       {std::pair("", ""), {"corp lan%s", "192.168.77.1"}, {"M\u00dcLL", "a:b"}}) {
    SCOPED_TRACE(realm);
    put(smbshare.ads_realm, realm);
    put(smbshare.ads_pwd_server, server);
    EXPECT_EQ(written(), krb5_conf_of(realm, server));
  }
}

TEST(Krb5Conf, ALineEndInASettingBeginsNoLineOfItsOwn) {
  put(smbshare.ads_realm, "CORP\n[realms]");
  put(smbshare.ads_pwd_server, "dc1\r\nkdc = dc2");
  EXPECT_EQ(written(), krb5_conf_of("CORP [realms]", "dc1  kdc = dc2"));
}

TEST(Krb5Conf, HoldsTheLongestSettingsWhole) {
  const std::string realm(511, 'R');
  const std::string server(511, 's');
  put(smbshare.ads_realm, realm);
  put(smbshare.ads_pwd_server, server);
  EXPECT_EQ(written(), krb5_conf_of(realm, server));
}

TEST(Krb5Conf, IsTheSameOutsideADomain) {
  in_a_domain();
  smbshare.ads_enable = 0;
  EXPECT_EQ(written(), krb5_conf_of("CORP.LAN", "dc1"));
}

TEST(Krb5Conf, NeverHoldsThePasswordOrTheAccount) {
  in_a_domain({.password = "a-password"});
  EXPECT_EQ(written().find("a-password"), std::string::npos);
  EXPECT_EQ(written().find("Administrator"), std::string::npos);
}

TEST(Krb5Conf, ReplacesALongerFileInPlace) {
  Appliance{}.file(krb5_conf, std::string(5000, 'x'), 0640).link(krb5_conf, "/tmp/link");
  in_a_domain();
  EXPECT_EQ(written(), krb5_conf_of("CORP.LAN", "dc1"));
  EXPECT_EQ(mode(krb5_conf), 0640U);
  EXPECT_EQ(read_file("/tmp/link"), krb5_conf_of("CORP.LAN", "dc1"));
}

TEST(Krb5Conf, ThatCannotBeOpenedIsSkippedSilently) {
  make_unopenable(krb5_conf);
  in_a_domain();
  expect_silence(ads_create_krb5_conf);
  struct stat status = {};
  ASSERT_EQ(lstat(krb5_conf, &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
}

TEST(Krb5Conf, WritingItPrintsNothing) {
  in_a_domain();
  expect_silence(ads_create_krb5_conf);
}

} // namespace
} // namespace nasshare::tests
