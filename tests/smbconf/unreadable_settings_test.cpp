// A configuration database that fails: no default is stored over what could not be read.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "next_definition.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string unreadable_key;

void set_all() {
  Appliance{}
      .config("/system_mgr/samba/workgroup", "STUDIO")
      .config("/system_mgr/samba/netbios_name", "attic")
      .config("/system_mgr/samba/server_string", "the attic's")
      .config("/hw_ver", "MyBox");
}

TEST(UnreadableSetting, KeepsItsStoredValue) {
  set_all();
  for (const char *key :
       {"/system_mgr/samba/workgroup", "/system_mgr/samba/netbios_name", "/system_mgr/samba/server_string"}) {
    unreadable_key = key;
    read_global_setting();
  }
  unreadable_key.clear();
  EXPECT_EQ(stored_value("/system_mgr/samba/workgroup"), "STUDIO");
  EXPECT_EQ(stored_value("/system_mgr/samba/netbios_name"), "attic");
  EXPECT_EQ(stored_value("/system_mgr/samba/server_string"), "the attic's");
}

TEST(UnreadableSetting, MakesNoDefaultOfAnother) {
  Appliance{}.config("/hw_ver", "MyBox");
  unreadable_key = "/hw_ver";
  read_global_setting();
  unreadable_key.clear();
  read_global_setting();
  EXPECT_STREQ(pss->server_string, "MyBox");
}

TEST(UnreadableSetting, LetsTheOthersTakeTheirDefaults) {
  Appliance{}.config("/hw_ver", "MyBox");
  unreadable_key = "/system_mgr/samba/netbios_name";
  read_global_setting();
  unreadable_key.clear();
  EXPECT_EQ(stored_value("/system_mgr/samba/workgroup"), "workgroup");
  EXPECT_EQ(stored_value("/system_mgr/samba/netbios_name"), "");
  EXPECT_EQ(stored_value("/system_mgr/samba/server_string"), "MyBox");
}

} // namespace
} // namespace nasshare::tests

// This program's own configuration database, which says as platform.h has it that a value cannot be read.
extern "C" [[gnu::visibility("default")]] void xml_get_str(const char *key, int size, char *destination) {
  static auto *const reference =
      nasshare::tests::next_definition<void(const char *, int, char *)>("xml_get_str");
  if (std::string_view(key) == nasshare::tests::unreadable_key) {
    *destination = '\0';
    errno = EIO;
    return;
  }
  reference(key, size, destination);
}
