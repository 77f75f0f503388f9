// What /proc/mdstat says of an array: its kind, and the disk on which the volume lives.
#include "appliance.h"
#include "fields.h"
#include "nasshare/volume.h"
#include "own_table.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

// Two disks with their hidden partitions mounted, as the disk map leaves them.
VolumeTable two_disks() {
  Appliance{}.mtab("/dev/sda4 /mnt/HD_a4 ext3 rw 0 0\n/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n");
  auto table = empty_table();
  table->hd_present[0] = table->hd_present[1] = 1;
  put(table->hd_device[0], "sda");
  put(table->hd_device[1], "sdb");
  return table;
}

struct Found {
  int kind;
  int disk;

  bool operator==(const Found &) const = default;
};

// What is found for volume 0; 7 and -1 stand for "left as it was".
Found found(const VolumeTable &table, const std::string &mdstat, const char *md_name) {
  Appliance{}.mdstat(mdstat);
  table->vol_raid_type[0] = 7;
  table->vol_hd[0] = -1;
  parse_raid_info(table.get(), 0, md_name);
  return {table->vol_raid_type[0], table->vol_hd[0]};
}

TEST(Mdstat, LineTellsTheKindOfArray) {
  const struct {
    const char *line;
    const char *md_name;
    int kind;
  } rows[] = {
      {"md1 : active linear sdb2[1] sda2[0]", "md1", 2},
      {"md1 : active raid1 sdb2[1] sda2[0]", "md1", 4},
      {"md1 : active raid0 sdb2[1] sda2[0]", "md1", 3},
      {"md1 : active raid5 sdb2[1] sda2[0]", "md1", 5},
      {"md1 : active raid10 sdb2[1] sda2[0]", "md1", 4},
      {"md1 : active raid6 sdb2[1] sda2[0]", "md1", 7},
      {"md1 : inactive sdb2[1] sda2[0]", "md1", 7},
      {"md1 : active linear raid1 raid0 sda2[0]", "md1", 2},
      {"md1 : active raid5 raid0 raid1 sda2[0]", "md1", 4},
      {"md1 : active raid5 raid0 sda2[0]", "md1", 3},
      {"md3 : active raid0 md2[1] md1[0]", "md3", 6},
      {"md3 : active raid0 sdb2[1] sda2[0]", "md3", 3},
      {"md3 : active raid0 md4[1] md1[0]", "md3", 3},
      {"md3 : active raid0 md2[1] sda2[0]", "md3", 3},
      {"md3 : active raid0 md2[1] md1[0]", "md1", 3},
      {"md4 : active raid0 md2[1] md1[0]", "md4", 3},
      {"md127 : active raid1 sdb2[1] sda2[0]", "md1", 4},
      {"md2 : active raid1 sdb2[1] sda2[0]", "md1", 7},
  };
  const auto table = two_disks();
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.line) + " for " + row.md_name);
    EXPECT_EQ(found(table, std::string(row.line) + "\n", row.md_name).kind, row.kind);
  }
}

TEST(Mdstat, LastLineThatNamesTheArrayWins) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "md1 : active raid1 sda2[0]\nmd3 : active raid0 md2[1] md1[0]\n", "md1").kind, 3);
  EXPECT_EQ(found(table, "md3 : active raid0 md2[1] md1[0]\nmd1 : active raid1 sda2[0]\n", "md1").kind, 4);
}

TEST(Mdstat, LineWithoutAKnownLevelLeavesTheKindOfTheLineBefore) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "md1 : active raid1 sda2[0]\nmd12 : inactive sdb2[0]\n", "md1"), (Found{4, 1}));
}

TEST(Mdstat, LevelsOfOtherLinesDoNotCount) {
  const auto table = two_disks();
  EXPECT_EQ(found(table,
                  "Personalities : [linear] [raid0] [raid1] [raid5]\n"
                  "md2 : active linear sda2[0]\n"
                  "md1 : active raid5 sdb3[1]\n"
                  "      98240 blocks super 1.2 level raid1\n"
                  "unused devices: <none>\n",
                  "md1"),
            (Found{5, 1}));
}

TEST(Mdstat, NoLineOfTheArrayLeavesEverything) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "Personalities : [raid1]\nunused devices: <none>\n", "md1"), (Found{7, -1}));
  EXPECT_EQ(found(table, "", "md1"), (Found{7, -1}));
}

TEST(Mdstat, VolumeLivesOnTheFirstDiskOfTheLine) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1] sda2[0]\n", "md1"), (Found{4, 0}));
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1]\n", "md1"), (Found{4, 1}));
  EXPECT_EQ(found(table, "md1 : active raid1 sdc2[1]\n", "md1"), (Found{4, -1}));
}

TEST(Mdstat, EmptyBayIsPassedOver) {
  const auto table = two_disks();
  table->hd_present[0] = 0;
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1] sda2[0]\n", "md1"), (Found{4, 1}));
  table->hd_present[1] = 0;
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1] sda2[0]\n", "md1"), (Found{4, -1}));
}

TEST(Mdstat, DiskWithoutItsHiddenPartitionIsPassedOver) {
  const auto table = two_disks();
  Appliance{}.mtab("/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n");
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1] sda2[0]\n", "md1"), (Found{4, 1}));
  Appliance{}.mtab("");
  EXPECT_EQ(found(table, "md1 : active raid1 sdb2[1] sda2[0]\n", "md1"), (Found{4, -1}));
}

TEST(Mdstat, StripedMirrorsLiveOnTheFirstDiskWithAHiddenPartition) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "md3 : active raid0 md2[1] md1[0]\n", "md3"), (Found{6, 0}));
  Appliance{}.mtab("/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n");
  EXPECT_EQ(found(table, "md3 : active raid0 md2[1] md1[0]\n", "md3"), (Found{6, 1}));
}

TEST(Mdstat, PlainStripeOfArraysLivesOnNoDisk) {
  const auto table = two_disks();
  EXPECT_EQ(found(table, "md4 : active raid0 md2[1] md1[0]\n", "md4"), (Found{3, -1}));
}

TEST(Mdstat, StripedMirrorsNeedADeviceName) {
  const auto table = two_disks();
  Appliance{}.mtab("/dev/4 /mnt/HD_a4 ext3 rw 0 0\n/dev/sdb4 /mnt/HD_b4 ext3 rw 0 0\n");
  table->hd_present[0] = 0;
  table->hd_device[0][0] = '\0';
  EXPECT_EQ(found(table, "md3 : active raid0 md2[1] md1[0]\n", "md3"), (Found{6, 1}));
}

TEST(Mdstat, OnlyTheVolumeAskedForIsSet) {
  const auto table = two_disks();
  Appliance{}.mdstat("md2 : active raid1 sdb2[1]\n");
  EXPECT_EQ(parse_raid_info(table.get(), 1, "md2"), 0);
  EXPECT_EQ(table->vol_raid_type[0], 0);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_EQ(table->vol_raid_type[1], 4);
  EXPECT_EQ(table->vol_hd[1], 1);
}

TEST(Mdstat, MissingFileSetsNothing) {
  const auto table = two_disks();
  table->vol_raid_type[0] = 7;
  table->vol_hd[0] = 1;
  parse_raid_info(table.get(), 0, "md1");
  EXPECT_EQ(table->vol_raid_type[0], 7);
  EXPECT_EQ(table->vol_hd[0], 1);
}

TEST(Mdstat, LongLineComesInPiecesOf4095Bytes) {
  const auto table = two_disks();
  const std::string filler(4095, 'x');
  EXPECT_EQ(found(table, filler + "md1 : active raid1 sdb2[1]\n", "md1"), (Found{4, 1}));
  EXPECT_EQ(found(table, "md1 : active raid1 " + filler + " sdb2[1]\n", "md1"), (Found{4, -1}));
}

TEST(Mdstat, WrongArgumentsSetNothing) {
  const auto table = two_disks();
  Appliance{}.mdstat("md1 : active raid1 sdb2[1]\n");
  parse_raid_info(table.get(), 0, nullptr);
  parse_raid_info(table.get(), -1, "md1");
  parse_raid_info(table.get(), 2, "md1");
  parse_raid_info(nullptr, 0, "md1");
  EXPECT_EQ(table->vol_raid_type[0], 0);
  EXPECT_EQ(table->vol_raid_type[1], 0);
  EXPECT_EQ(table->vol_hd[0], 0);
  EXPECT_EQ(table->vol_hd[1], 0);
  EXPECT_STREQ(table->vol_share_name[0], "");
}

} // namespace
} // namespace nasshare::tests
