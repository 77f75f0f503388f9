// The parts of a path.
#include "nasshare/support.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

TEST(PathParts, LastComponentFollowsTheLastSlash) {
  const struct {
    const char *path;
    const char *component;
  } rows[] = {
      {"/mnt/HD_a4/.smb.xml", ".smb.xml"},
      {"a/b", "b"},
      {"b", "b"},
      {"/b", "b"},
      {"/", "/"},
      {"//", ""},
      {"a/", ""},
      {"/mnt/", ""},
      {"", ""},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_STREQ(bb_get_last_path_component(row.path), row.component);
  }
}

TEST(PathParts, LastComponentLiesInThePathItself) {
  const char *path = "/mnt/HD_a4";
  EXPECT_EQ(bb_get_last_path_component(path), path + 5);
}

TEST(PathParts, MissingPathHasAnEmptyLastComponent) {
  EXPECT_STREQ(bb_get_last_path_component(nullptr), "");
}

TEST(PathParts, LastCharacterIsFoundWhereItStands) {
  const char *text = "/mnt//";
  EXPECT_EQ(last_char_is(text, '/'), text + 5);
  const char *one = "/";
  EXPECT_EQ(last_char_is(one, '/'), one);
}

TEST(PathParts, OtherLastCharacterIsNone) {
  EXPECT_EQ(last_char_is("/mnt/x", '/'), nullptr);
  EXPECT_EQ(last_char_is("/mnt/ ", '/'), nullptr);
  EXPECT_EQ(last_char_is("", '/'), nullptr);
  EXPECT_EQ(last_char_is("", '\0'), nullptr);
  EXPECT_EQ(last_char_is(nullptr, '/'), nullptr);
}

TEST(PathParts, LastByteMayBeAnyByte) {
  const char *text = "caf\xC3\xA9";
  EXPECT_EQ(last_char_is(text, '\xA9'), text + 4);
}

TEST(PathParts, FolderAndFileAreJoinedByOneSlash) {
  const struct {
    const char *folder;
    const char *file;
    const char *joined;
  } rows[] = {
      {"/mnt", "file", "/mnt/file"},
      {"/mnt/", "file", "/mnt/file"},
      {"/mnt", "/file", "/mnt/file"},
      {"/mnt/", "///file", "/mnt/file"},
      {"/mnt//", "file", "/mnt//file"},
      {"/", "file", "/file"},
      {"", "file", "/file"},
      {nullptr, "file", "/file"},
      {"mnt", "a/b", "mnt/a/b"},
      {"/mnt", "", "/mnt/"},
      {"/mnt", "/", "/mnt/"},
      {"/mnt", nullptr, "/mnt/"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.joined);
    std::array<char, 1024> output{};
    concat_path_file(row.folder, row.file, output.data());
    EXPECT_STREQ(output.data(), row.joined);
  }
}

TEST(PathParts, JoinedPathStaysInItsBuffer) {
  struct {
    std::array<char, 1024> output;
    std::array<char, 8> neighbour;
  } place{};
  place.neighbour.fill('n');
  concat_path_file(std::string(2000, 'd').c_str(), "file", place.output.data());
  EXPECT_EQ(place.output.data(), std::string(1023, 'd'));
  concat_path_file("/d", std::string(2000, 'f').c_str(), place.output.data());
  EXPECT_EQ(place.output.data(), "/d/" + std::string(1020, 'f'));
  EXPECT_EQ(std::string(place.neighbour.data(), place.neighbour.size()), "nnnnnnnn");
}

TEST(PathParts, MissingOutputIsLeftAlone) {
  concat_path_file("/mnt", "file", nullptr);
}

} // namespace
} // namespace nasshare::tests
