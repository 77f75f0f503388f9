// Without memfd_create(2), as on a kernel before 3.17, smb.conf is written all the same.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "next_definition.h"
#include "paths.h"
#include "text.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

bool has_memory_files = true;

TEST(OldKernel, WritesSmbConf) {
  Appliance::single_disks();
  get_samba_info2();
  has_memory_files = false;
  EXPECT_EQ(create_smb_conf(), 0);
  EXPECT_TRUE(contains(read_file(smb_conf), "[ global ]\n"));
}

} // namespace
} // namespace nasshare::tests

// Wins over the C library's.
extern "C" [[gnu::visibility("default")]] int memfd_create(const char *name, unsigned int flags) noexcept {
  static auto *const create =
      nasshare::tests::next_definition<int(const char *, unsigned int)>("memfd_create");
  if (!nasshare::tests::has_memory_files) {
    errno = ENOSYS;
    return -1;
  }
  return create(name, flags);
}
