// A configuration database that fails: nothing is joined or left on doubt.
#include "domain.h"
#include "nasshare/ads.h"
#include "nasshare/platform.h"
#include "next_definition.h"
#include "paths.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace nasshare::tests {
namespace {

std::string unreadable_setting;

class UnreadableDomain : public testing::Test {
protected:
  UnreadableDomain() { machine_.file(nsswitch_conf, "old\n").file(krb5_conf, "old\n"); }
  ~UnreadableDomain() override { unreadable_setting.clear(); }

  static void expect_nothing_done() {
    EXPECT_EQ(transcript(), "");
    EXPECT_EQ(read_file(nsswitch_conf), "old\n");
    EXPECT_EQ(read_file(krb5_conf), "old\n");
  }

  Appliance machine_ = domain_member();
};

TEST_F(UnreadableDomain, IsNotLeft) {
  unreadable_setting = "/system_mgr/samba/ads_enable";
  EXPECT_EQ(ads_stop(), 3);
  expect_nothing_done();
}

TEST_F(UnreadableDomain, IsNotJoined) {
  for (const char *key : {"ads_enable", "ads_realm", "ads_pwd_server", "netbios_name"}) {
    unreadable_setting = std::string("/system_mgr/samba/") + key;
    EXPECT_EQ(ads_start(), 2) << key;
    expect_nothing_done();
  }
}

TEST_F(UnreadableDomain, IsJoinedAndLeftOnceItCanBeRead) {
  EXPECT_EQ(ads_start(), 1);
  machine_.config("/system_mgr/samba/ads_enable", "0");
  EXPECT_EQ(ads_stop(), 1);
}

bool is_unreadable(const char *key) {
  return key == unreadable_setting;
}

} // namespace
} // namespace nasshare::tests

// This program's own configuration database, which says as platform.h has it that a value cannot be read.
extern "C" [[gnu::visibility("default")]] void xml_get_str(const char *key, int size, char *destination) {
  static auto *const reference =
      nasshare::tests::next_definition<void(const char *, int, char *)>("xml_get_str");
  if (nasshare::tests::is_unreadable(key)) {
    *destination = '\0';
    errno = EIO;
    return;
  }
  reference(key, size, destination);
}

extern "C" [[gnu::visibility("default")]] int xml_get_int(const char *key) {
  static auto *const reference = nasshare::tests::next_definition<int(const char *)>("xml_get_int");
  if (nasshare::tests::is_unreadable(key)) {
    errno = EIO;
    return 0;
  }
  return reference(key);
}
