// read_global_setting: the settings, their defaults and what is written back.
#include "appliance.h"
#include "debug_output.h"
#include "fields.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"
#include "text.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

bool refuse_sockets = false;

// The three names, so that no default is needed.
Appliance named_appliance() {
  return Appliance{}
      .config("/system_mgr/samba/workgroup", "HOME")
      .config("/system_mgr/samba/netbios_name", "ATTIC")
      .config("/system_mgr/samba/server_string", "The box under the roof");
}

Appliance appliance_with_domain_keys() {
  return named_appliance()
      .config("/system_mgr/samba/ads_workgroup", "CORP")
      .config("/system_mgr/samba/ads_username", "Administrator")
      .config("/system_mgr/samba/ads_password", "s3cret & <more>")
      .config("/system_mgr/samba/ads_realm", "CORP.LAN")
      .config("/system_mgr/samba/ads_pwd_server", "dc1.corp.lan");
}

void set_domain_fields(const char *text) {
  put(pss->ads_workgroup, text);
  put(pss->ads_username, text);
  put(pss->ads_password, text);
  put(pss->ads_realm, text);
  put(pss->ads_pwd_server, text);
}

void expect_domain_fields(const char *text) {
  EXPECT_STREQ(pss->ads_workgroup, text);
  EXPECT_STREQ(pss->ads_username, text);
  EXPECT_STREQ(pss->ads_password, text);
  EXPECT_STREQ(pss->ads_realm, text);
  EXPECT_STREQ(pss->ads_pwd_server, text);
}

TEST(GlobalSettings, AreReadFromTheDatabase) {
  named_appliance();
  read_global_setting();
  EXPECT_STREQ(pss->workgroup, "HOME");
  EXPECT_STREQ(pss->netbios_name, "ATTIC");
  EXPECT_STREQ(pss->server_string, "The box under the roof");
}

TEST(GlobalSettings, OfAnEmptyDatabaseTakeDefaults) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02").config("/hw_ver", "T2");
  read_global_setting();
  EXPECT_STREQ(pss->workgroup, "workgroup");
  EXPECT_STREQ(pss->netbios_name, "tarvo-a1b2");
  EXPECT_STREQ(pss->server_string, "T2");
  EXPECT_EQ(pss->dfs_enable, 0);
  EXPECT_EQ(pss->ads_enable, 0);
}

TEST(GlobalSettings, DefaultsAreWrittenBackInOrder) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02").config("/hw_ver", "T2");
  read_global_setting();
  EXPECT_EQ(read_file(config_database), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                        "<config>\n"
                                        "  <hw_ver>T2</hw_ver>\n"
                                        "  <system_mgr>\n"
                                        "    <samba>\n"
                                        "      <workgroup>workgroup</workgroup>\n"
                                        "      <netbios_name>tarvo-a1b2</netbios_name>\n"
                                        "      <server_string>T2</server_string>\n"
                                        "    </samba>\n"
                                        "  </system_mgr>\n"
                                        "</config>\n");
}

TEST(GlobalSettings, DefaultsOutliveTheAddressTheyCameFrom) {
  Appliance machine = Appliance{}.hardware_address("02:00:00:0a:1b:02").config("/hw_ver", "T2");
  read_global_setting();
  machine.hardware_address("02:00:00:11:22:33").config("/hw_ver", "T3");
  read_global_setting();
  EXPECT_STREQ(pss->netbios_name, "tarvo-a1b2");
  EXPECT_STREQ(pss->server_string, "T2");
}

TEST(GlobalSettings, ThatAreThereAreKeptAndNothingIsWritten) {
  named_appliance().hardware_address("02:00:00:0a:1b:02").config("/hw_ver", "T2");
  const std::string before = read_file(config_database);
  read_global_setting();
  EXPECT_STREQ(pss->netbios_name, "ATTIC");
  EXPECT_EQ(read_file(config_database), before);
  EXPECT_EQ(kernel_requests(), "");
}

TEST(GlobalSettings, OnlyTheMissingNameIsFilledIn) {
  Appliance{}
      .hardware_address("02:00:00:0a:1b:02")
      .config("/hw_ver", "T2")
      .config("/system_mgr/samba/workgroup", "HOME")
      .config("/system_mgr/samba/server_string", "Box");
  read_global_setting();
  EXPECT_EQ(stored_value("/system_mgr/samba/workgroup"), "HOME");
  EXPECT_EQ(stored_value("/system_mgr/samba/netbios_name"), "tarvo-a1b2");
  EXPECT_EQ(stored_value("/system_mgr/samba/server_string"), "Box");
}

TEST(GlobalSettings, AnEarlierValueInMemoryDoesNotStandInForAMissingOne) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  put(pss->workgroup, "STALE");
  put(pss->netbios_name, "STALE");
  put(pss->server_string, "STALE");
  read_global_setting();
  EXPECT_STREQ(pss->workgroup, "workgroup");
  EXPECT_STREQ(pss->netbios_name, "tarvo-a1b2");
  EXPECT_STREQ(pss->server_string, "");
}

TEST(GlobalSettings, WithoutAHardwareVersionTheServerStringIsEmptyAndStoredSo) {
  Appliance{};
  read_global_setting();
  EXPECT_STREQ(pss->server_string, "");
  EXPECT_NE(read_file(config_database).find("<server_string/>"), std::string::npos);
}

TEST(GlobalSettings, SwitchesAreOnForTheValueOneOnly) {
  Appliance machine = named_appliance();
  for (const char *value : {"0", "2", "-1", "10", "1x", "yes", "", "4294967297", "99999999999"}) {
    SCOPED_TRACE(value);
    machine.config("/system_mgr/samba/dfs_enable", value).config("/system_mgr/samba/ads_enable", value);
    pss->dfs_enable = 1;
    pss->ads_enable = 1;
    read_global_setting();
    EXPECT_EQ(pss->dfs_enable, 0);
    EXPECT_EQ(pss->ads_enable, 0);
  }
  machine.config("/system_mgr/samba/dfs_enable", "1").config("/system_mgr/samba/ads_enable", "1");
  read_global_setting();
  EXPECT_EQ(pss->dfs_enable, 1);
  EXPECT_EQ(pss->ads_enable, 1);
}

TEST(GlobalSettings, TheTwoSwitchesAreIndependent) {
  Appliance machine = named_appliance().config("/system_mgr/samba/dfs_enable", "1");
  read_global_setting();
  EXPECT_EQ(pss->dfs_enable, 1);
  EXPECT_EQ(pss->ads_enable, 0);
  machine.config("/system_mgr/samba/dfs_enable", "0").config("/system_mgr/samba/ads_enable", "1");
  read_global_setting();
  EXPECT_EQ(pss->dfs_enable, 0);
  EXPECT_EQ(pss->ads_enable, 1);
}

TEST(GlobalSettings, DomainSettingsAreReadInDomainMode) {
  appliance_with_domain_keys().config("/system_mgr/samba/ads_enable", "1");
  read_global_setting();
  EXPECT_STREQ(pss->ads_workgroup, "CORP");
  EXPECT_STREQ(pss->ads_username, "Administrator");
  EXPECT_STREQ(pss->ads_password, "s3cret & <more>");
  EXPECT_STREQ(pss->ads_realm, "CORP.LAN");
  EXPECT_STREQ(pss->ads_pwd_server, "dc1.corp.lan");
}

TEST(GlobalSettings, DomainSettingsHaveNoDefaults) {
  named_appliance().config("/system_mgr/samba/ads_enable", "1");
  const std::string before = read_file(config_database);
  set_domain_fields("stale");
  read_global_setting();
  expect_domain_fields("");
  EXPECT_EQ(read_file(config_database), before);
}

TEST(GlobalSettings, DomainSettingsStayUntouchedOutsideDomainMode) {
  appliance_with_domain_keys().config("/system_mgr/samba/ads_enable", "2");
  set_domain_fields("as it was");
  read_global_setting();
  EXPECT_EQ(pss->ads_enable, 0);
  expect_domain_fields("as it was");
}

TEST(GlobalSettings, LongValuesAreCutToTheirFields) {
  Appliance{}
      .config("/system_mgr/samba/workgroup", std::string(600, 'w'))
      .config("/system_mgr/samba/netbios_name", std::string(511, 'n'))
      .config("/system_mgr/samba/server_string", std::string(600, 's'))
      .config("/system_mgr/samba/ads_enable", "1")
      .config("/system_mgr/samba/ads_pwd_server", std::string(600, 'p'))
      .config("/system_mgr/samba/dfs_enable", "1");
  pss->list_changed = 1234;
  read_global_setting();
  EXPECT_EQ(pss->workgroup, std::string(511, 'w'));
  EXPECT_EQ(pss->netbios_name, std::string(511, 'n'));
  EXPECT_EQ(pss->server_string, std::string(511, 's'));
  EXPECT_EQ(pss->list_changed, 1234);
  EXPECT_STREQ(pss->ads_realm, "");
  EXPECT_EQ(pss->ads_pwd_server, std::string(511, 'p'));
  EXPECT_EQ(pss->dfs_enable, 1);
}

TEST(GlobalSettings, ALongHardwareVersionIsStoredAsTheServerStringThatItGives) {
  Appliance{}.config("/hw_ver", std::string(600, 'h'));
  read_global_setting();
  EXPECT_EQ(pss->server_string, std::string(511, 'h'));
  EXPECT_EQ(stored_value("/system_mgr/samba/server_string"), std::string(511, 'h'));
}

TEST(GlobalSettings, TheVolumeTableAndTheShareListStay) {
  named_appliance();
  put(pss->usb_mount_name[31], std::string(511, 'u'));
  pss->vol_present[0] = 7;
  pss->count = 0;
  read_global_setting();
  EXPECT_EQ(pss->usb_mount_name[31], std::string(511, 'u'));
  EXPECT_EQ(pss->vol_present[0], 7);
  EXPECT_EQ(pss->count, 0);
}

TEST(GlobalSettings, TheGeneratedNameIsPrintedForAnyNonZeroFlag) {
  Appliance machine = Appliance{}.hardware_address("02:00:00:0a:1b:02");
  const auto read_unnamed = [&machine] {
    machine.config("/system_mgr/samba/netbios_name", "");
    read_global_setting();
  };
  expect_listing(read_unnamed, "mac[tarvo-a1b2]\n");
}

TEST(GlobalSettings, NothingIsPrintedForANameThatIsThere) {
  named_appliance().config("/system_mgr/samba/ads_enable", "1");
  expect_silence(read_global_setting);
}

TEST(GlobalSettings, WithoutASocketTheNameStaysEmptyAndIsStoredSo) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  refuse_sockets = true;
  const auto read = [] {
    put(pss->netbios_name, "STALE");
    read_global_setting();
    EXPECT_STREQ(pss->netbios_name, "");
    EXPECT_TRUE(contains(read_file(config_database), "<netbios_name/>"));
  };
  expect_output(read, [](int flag) {
    return std::string("IOCTL API: Create socket fail\n") + (flag == 0 ? "" : "mac[]\n");
  });
}

} // namespace
} // namespace nasshare::tests

// Wins over the C library's.
extern "C" [[gnu::visibility("default")]] int socket(int domain, int type, int protocol) noexcept {
  if (nasshare::tests::refuse_sockets) {
    errno = EMFILE;
    return -1;
  }
  return static_cast<int>(syscall(SYS_socket, domain, type, protocol));
}
