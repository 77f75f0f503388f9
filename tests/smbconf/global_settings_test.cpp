// read_global_setting and Get_Mac_Str: settings, their defaults and what is written back.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "nasshare/support.h"
#include "output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

bool refuse_sockets = false;

constexpr const char *database = "/etc/NAS_CFG/config.xml";

std::string stored(const char *key) {
  char value[512] = "";
  xml_get_str(key, sizeof value, value);
  return value;
}

std::string name_for(const std::string &hardware_address) {
  Appliance{}.hardware_address(hardware_address);
  char name[32] = "";
  Get_Mac_Str(name);
  return name;
}

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

void set(char (&field)[512], const char *text) {
  std::snprintf(field, sizeof field, "%s", text);
}

void set_domain_fields(const char *text) {
  set(pss->ads_workgroup, text);
  set(pss->ads_username, text);
  set(pss->ads_password, text);
  set(pss->ads_realm, text);
  set(pss->ads_pwd_server, text);
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
  EXPECT_EQ(read_file(database), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
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
  const std::string before = read_file(database);
  read_global_setting();
  EXPECT_STREQ(pss->netbios_name, "ATTIC");
  EXPECT_EQ(read_file(database), before);
  EXPECT_EQ(kernel_requests(), "");
}

TEST(GlobalSettings, OnlyTheMissingNameIsFilledIn) {
  Appliance{}
      .hardware_address("02:00:00:0a:1b:02")
      .config("/hw_ver", "T2")
      .config("/system_mgr/samba/workgroup", "HOME")
      .config("/system_mgr/samba/server_string", "Box");
  read_global_setting();
  EXPECT_EQ(stored("/system_mgr/samba/workgroup"), "HOME");
  EXPECT_EQ(stored("/system_mgr/samba/netbios_name"), "tarvo-a1b2");
  EXPECT_EQ(stored("/system_mgr/samba/server_string"), "Box");
}

TEST(GlobalSettings, AnEarlierValueInMemoryDoesNotStandInForAMissingOne) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  set(pss->workgroup, "STALE");
  set(pss->netbios_name, "STALE");
  set(pss->server_string, "STALE");
  read_global_setting();
  EXPECT_STREQ(pss->workgroup, "workgroup");
  EXPECT_STREQ(pss->netbios_name, "tarvo-a1b2");
  EXPECT_STREQ(pss->server_string, "");
}

TEST(GlobalSettings, WithoutAHardwareVersionTheServerStringIsEmptyAndStoredSo) {
  Appliance{};
  read_global_setting();
  EXPECT_STREQ(pss->server_string, "");
  EXPECT_NE(read_file(database).find("<server_string/>"), std::string::npos);
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
  const std::string before = read_file(database);
  set_domain_fields("stale");
  read_global_setting();
  expect_domain_fields("");
  EXPECT_EQ(read_file(database), before);
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
  EXPECT_EQ(stored("/system_mgr/samba/server_string"), std::string(511, 'h'));
}

TEST(GlobalSettings, TheVolumeTableAndTheShareListStay) {
  named_appliance();
  std::memset(pss->usb_mount_name[31], 'u', 511);
  pss->vol_present[0] = 7;
  pss->count = 0;
  read_global_setting();
  EXPECT_EQ(pss->usb_mount_name[31], std::string(511, 'u'));
  EXPECT_EQ(pss->vol_present[0], 7);
  EXPECT_EQ(pss->count, 0);
}

TEST(GlobalSettings, TheGeneratedNameIsPrintedForAnyNonZeroFlag) {
  const struct {
    int flag;
    const char *output;
  } rows[] = {{0, ""}, {1, "mac[tarvo-a1b2]\n"}, {2, "mac[tarvo-a1b2]\n"}, {-1, "mac[tarvo-a1b2]\n"}};
  Appliance machine = Appliance{}.hardware_address("02:00:00:0a:1b:02");
  for (const auto &row : rows) {
    SCOPED_TRACE(row.flag);
    machine.config("/system_mgr/samba/netbios_name", "");
    smb_dbg_flag = row.flag;
    EXPECT_EQ(output_of(read_global_setting), row.output);
  }
}

TEST(GlobalSettings, NothingIsPrintedForANameThatIsThere) {
  named_appliance().config("/system_mgr/samba/ads_enable", "1");
  for (const int flag : {1, 2}) {
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of(read_global_setting), "");
  }
}

TEST(GlobalSettings, WithoutASocketTheNameStaysEmptyAndIsStoredSo) {
  const struct {
    int flag;
    const char *output;
  } rows[] = {{0, "IOCTL API: Create socket fail\n"},
              {1, "IOCTL API: Create socket fail\nmac[]\n"},
              {2, "IOCTL API: Create socket fail\nmac[]\n"}};
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  refuse_sockets = true;
  for (const auto &row : rows) {
    SCOPED_TRACE(row.flag);
    set(pss->netbios_name, "STALE");
    smb_dbg_flag = row.flag;
    EXPECT_EQ(output_of(read_global_setting), row.output);
    EXPECT_STREQ(pss->netbios_name, "");
    EXPECT_NE(read_file(database).find("<netbios_name/>"), std::string::npos);
  }
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
  refuse_sockets = true;
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    char name[32] = "as it was";
    EXPECT_EQ(output_of([&name] { Get_Mac_Str(name); }), "IOCTL API: Create socket fail\n");
    EXPECT_STREQ(name, "as it was");
  }
  EXPECT_EQ(kernel_requests(), "");
}

TEST(MacName, PrintsNothingOtherwise) {
  Appliance{}.hardware_address("02:00:00:0a:1b:02");
  smb_dbg_flag = 1;
  char name[32] = "";
  EXPECT_EQ(output_of([&name] { Get_Mac_Str(name); }), "");
}

TEST(MacName, WithoutADestinationIsNothing) {
  Appliance{};
  EXPECT_EQ(output_of([] { Get_Mac_Str(nullptr); }), "");
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
