// fix_path: moving a stored path onto a volume's mount point.
#include "fields.h"
#include "nasshare/catalogue.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

// A path field, and the field behind it.
struct GuardedPath {
  explicit GuardedPath(const std::string &text) { put(path, text); }
  char path[4096] = "";
  char neighbour[16] = "neighbour";
};

std::string fixed(const std::string &path, int volume) {
  GuardedPath field(path);
  fix_path(field.path, volume);
  EXPECT_STREQ(field.neighbour, "neighbour");
  return field.path;
}

TEST(FixPath, MovesThePathOntoTheVolume) {
  const struct {
    const char *path;
    int volume;
    const char *result;
  } rows[] = {
      // The older layout: "/mnt/HD_", the volume's letter and "4" in front.
      {"/mnt/HD_a4/Music", 0, "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD_a4/Music", 1, "/mnt/HD/HD_b2/Music"},
      {"/mnt/HD_b4/Music/old songs", 0, "/mnt/HD/HD_a2/Music/old songs"},
      {"/mnt/HD_a4", 0, "/mnt/HD/HD_a2"},
      {"/mnt/HD_a4/", 0, "/mnt/HD/HD_a2/"},
      {"/mnt/HD_xyz", 0, "/mnt/HD/HD_a2z"},
      // Today's layout.
      {"/mnt/HD/HD_a2/Music", 0, "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD/HD_b2/Music", 0, "/mnt/HD/HD_a2/Music"},
      {"/mnt/HD/HD_a2/Music", 1, "/mnt/HD/HD_b2/Music"},
      {"/mnt/HD/HD_a2", 1, "/mnt/HD/HD_b2"},
      {"/mnt/HD/HD_a2/x", 2, "/mnt/HD/HD_c2/x"},
      {"/mnt/HD/HD_a2/x", 3, "/mnt/HD/HD_d2/x"},
      // Anything else loses its first thirteen characters.
      {"/mnt/USB/HD_c1/films", 0, "/mnt/HD/HD_a21/films"},
      {"0123456789abcdefghi", 0, "/mnt/HD/HD_a2defghi"},
      {"/mnt/HD", 0, "/mnt/HD/HD_a2"},
      {"x", 1, "/mnt/HD/HD_b2"},
      {"", 0, "/mnt/HD/HD_a2"},
      {"/mnt/HD_", 0, "/mnt/HD/HD_a2"},
      {"/mnt/HD_a", 0, "/mnt/HD/HD_a2"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.path) + " on volume " + std::to_string(row.volume));
    EXPECT_EQ(fixed(row.path, row.volume), row.result);
  }
}

TEST(FixPath, KeepsTheWidthOfTheField) {
  const std::string rest(4081, 'x');
  EXPECT_EQ(fixed("/mnt/HD_a4/" + rest, 0), "/mnt/HD/HD_a2/" + rest);
  EXPECT_EQ(fixed("/mnt/HD_a4/" + rest + "yyy", 0), "/mnt/HD/HD_a2/" + rest);
  EXPECT_EQ(fixed("/mnt/HD_a4/" + std::string(4080, 'x') + "\xC3\xA4y", 0),
            "/mnt/HD/HD_a2/" + std::string(4080, 'x'));
  EXPECT_EQ(fixed("/mnt/HD/HD_b2/" + rest, 0), "/mnt/HD/HD_a2/" + rest);
}

TEST(FixPath, KnowsNoOtherVolumes) {
  EXPECT_EQ(fixed("/mnt/HD_a4/Music", -1), "/mnt/HD_a4/Music");
  EXPECT_EQ(fixed("/mnt/HD_a4/Music", 4), "/mnt/HD_a4/Music");
  fix_path(nullptr, 0);
}

TEST(VolumeRoots, AreTheFourMountPoints) {
  EXPECT_STREQ(SMB_VOL_NAME[0], "/mnt/HD/HD_a2");
  EXPECT_STREQ(SMB_VOL_NAME[1], "/mnt/HD/HD_b2");
  EXPECT_STREQ(SMB_VOL_NAME[2], "/mnt/HD/HD_c2");
  EXPECT_STREQ(SMB_VOL_NAME[3], "/mnt/HD/HD_d2");
}

} // namespace
} // namespace nasshare::tests
