// The way from a share to the recycle folder of its volume.
#include "nasshare/smbconf.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nasshare::tests {
namespace {

int slashes(std::string &path) {
  const int count = cal_slash_num(path.data());
  path.resize(std::char_traits<char>::length(path.c_str()));
  return count;
}

std::string related_path(int slash_count) {
  std::vector<char> destination(4096, '\0');
  make_related_path(destination.data(), slash_count);
  return destination.data();
}

TEST(SlashCount, OneTrailingSlashGoesAndTheOthersCount) {
  const struct {
    const char *path, *left;
    int count;
  } rows[] = {
      {"/mnt/HD/HD_a2", "/mnt/HD/HD_a2", 3},
      {"/mnt/HD/HD_a2/", "/mnt/HD/HD_a2", 3},
      {"/mnt/HD/HD_a2/doc/", "/mnt/HD/HD_a2/doc", 4},
      {"/mnt/HD/HD_a2/a/b", "/mnt/HD/HD_a2/a/b", 5},
      {"/mnt/HD/HD_a2//", "/mnt/HD/HD_a2/", 4},
      {"/", "", 0},
      {"//", "/", 1},
      {"", "", 0},
      {"doc", "doc", 0},
      {"doc/", "doc", 0},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.path);
    std::string path = row.path;
    EXPECT_EQ(slashes(path), row.count);
    EXPECT_EQ(path, row.left);
  }
}

TEST(SlashCount, OfALongPath) {
  std::string path(4095, '/');
  EXPECT_EQ(slashes(path), 4094);
  EXPECT_EQ(path, std::string(4094, '/'));
}

TEST(SlashCount, OfNoPathIsNone) {
  EXPECT_EQ(cal_slash_num(nullptr), 0);
}

TEST(RelatedPath, LeadsUpToTheVolumesRoot) {
  EXPECT_EQ(related_path(3), "./recycle");
  EXPECT_EQ(related_path(4), "../recycle");
  EXPECT_EQ(related_path(5), "../../recycle");
  EXPECT_EQ(related_path(8), "../../../../../recycle");
}

TEST(RelatedPath, BelowAVolumesRootTheDestinationIsUntouched) {
  for (const int count : {2, 1, 0, -1}) {
    char destination[] = "as it was";
    make_related_path(destination, count);
    EXPECT_STREQ(destination, "as it was");
  }
}

TEST(RelatedPath, IsCopiedWithoutItsTerminator) {
  std::vector<char> destination(4095, 'x');
  destination.push_back('\0');
  make_related_path(destination.data(), 4);
  EXPECT_EQ(std::string(destination.data(), 12), "../recyclexx");
  make_related_path(destination.data(), 3);
  EXPECT_EQ(std::string(destination.data(), 12), "./recycleexx");
}

TEST(RelatedPath, StaysInItsFieldWithATerminator) {
  for (const int count : {1365, 1366, 1367, 1368, 4095, 100000}) {
    SCOPED_TRACE(count);
    EXPECT_LE(related_path(count).size(), 4095U);
  }
  EXPECT_EQ(related_path(1365).size(), 1362U * 3 + 7);
}

TEST(RelatedPath, NeedsADestination) {
  make_related_path(nullptr, 4);
  EXPECT_EQ(related_path(4), "../recycle");
}

} // namespace
} // namespace nasshare::tests
