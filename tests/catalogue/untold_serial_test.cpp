// A disk without a serial number is a fact; one that could not be asked may be any disk.
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "share.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

// A record of another disk lies on the volume's mount point.
Appliance with_foreign_record(Appliance machine) {
  machine.folder("/mnt/HD/HD_a2/Films")
      .shares("/mnt/HD_a4", share_xml({stored_share("Music").on_disk("ANOTHER-DISK").everyone()}));
  return machine;
}

Share films() {
  return Share{"Films"}.path("/mnt/HD/HD_a2/Films").oplocks("yes").map_archive("no").everyone();
}

TEST(DiskWithoutSerial, LetsSharesBeChanged) {
  with_foreign_record(Appliance::single_disks()).disk("sda", "scsi0", "");
  EXPECT_EQ(add_share(films()), 1);
  EXPECT_EQ(chk_share("Films"), 0);
}

TEST(DiskThatDoesNotAnswer, LetsNoShareBeChanged) {
  with_foreign_record(Appliance::single_disks()).disk("sda", "scsi0", "").disk_status("sda", 1, 0, 0);
  EXPECT_EQ(add_share(films()), 0);
  EXPECT_EQ(read_file(first_share_file),
            share_xml({stored_share("Music").on_disk("ANOTHER-DISK").everyone()}));
}

TEST(DiskThatWasReset, LetsNoShareBeChanged) {
  for (const int key : {2, 6, 11}) {
    with_foreign_record(Appliance::single_disks()).disk("sda", "scsi0", "").disk_sense("sda", key);
    EXPECT_EQ(add_share(films()), 0) << key;
  }
}

// As one that is no ATA disk does at every request.
TEST(DiskThatKnowsNoIdentify, LetsSharesBeChanged) {
  with_foreign_record(Appliance::single_disks()).disk("sda", "scsi0", "").disk_sense("sda", 5);
  EXPECT_EQ(add_share(films()), 1);
}

} // namespace
} // namespace nasshare::tests
