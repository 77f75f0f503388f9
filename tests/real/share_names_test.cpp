// Names under which shares are reached.
#include "samba_machine.h"

#include <string>

namespace nasshare::tests {
namespace {

class ShareName : public SambaMachine, public testing::WithParamInterface<const char *> {};

TEST_P(ShareName, IsListedAndReachedAsItIs) {
  const std::string name = GetParam();
  add(Share{name}.path("/mnt/HD/HD_a2/" + name).read("#bob#").write("#alice#"));
  start();
  EXPECT_EQ(served_shares(), tests::Names{name});
  EXPECT_EQ(access("alice", name), "write");
  EXPECT_EQ(access("bob", name), "read");
  EXPECT_EQ(access("carol", name), "denied");
}

INSTANTIATE_TEST_SUITE_P(Names, ShareName,
                         testing::Values("Music", "My Docs", "R&B", "M\u00fcsik", "\u97f3\u697d", "a'b", "#1",
                                         "~`!@#$^&()_-',.a", "Recycle"));

class Names : public SambaMachine {};

TEST_F(Names, AnAbsentShareIsNotReached) {
  add(Share{"Music"}.path("/mnt/HD/HD_a2/Music").everyone());
  start();
  EXPECT_EQ(access("alice", "Films"), "no such share");
}

TEST_F(Names, ThePrintersSectionIsThePrintersSection) {
  add(Share{"Music"}.path("/mnt/HD/HD_a2/Music").everyone());
  start();
  const Ended parameter =
      shell("testparm -s --section-name=printers --parameter-name=printable /run/samba/smbd.conf");
  EXPECT_EQ(parameter.out, "Yes\n");
  EXPECT_EQ(access("alice", " printers "), "no such share");
}

TEST_F(Names, SharesOfBothVolumesAndTheRecycleBinsAreListed) {
  add(Share{"Music"}.path("/mnt/HD/HD_a2/Music").everyone().recycle(1));
  add(Share{"Photos"}.path("/mnt/HD/HD_b2/Photos").everyone().recycle(1));
  start();
  EXPECT_EQ(served_shares(),
            (tests::Names{"Music", "Photos", "Recycle Bin - Volume_1", "Recycle Bin - Volume_2"}));
}

} // namespace
} // namespace nasshare::tests
