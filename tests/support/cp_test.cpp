// cp: copying a file to a file or into a folder.
#include "appliance.h"
#include "copied.h"
#include "files.h"
#include "nasshare/support.h"
#include "output.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace nasshare::tests {
namespace {

Copied placed(const char *from, const char *to) {
  Captured captured;
  const int result = cp(from, to);
  return {result, captured.out()};
}

// A path of that many bytes whose folders exist.
std::string path_of_length(std::size_t length) {
  std::string path = "/tmp";
  while (length - path.size() > 202) {
    path += "/" + std::string(200, 'd');
  }
  files::make_folder(path);
  return path + "/" + std::string(length - path.size() - 1, 'f');
}

TEST(Cp, CopiesOntoAFile) {
  Appliance{}.file(source, "text");
  EXPECT_EQ(placed(source, target), done);
  EXPECT_EQ(read_file(target), "text");
}

TEST(Cp, PlacesTheFileInAFolderUnderItsOwnName) {
  Appliance{}
      .file(source, "text")
      .folder("/tmp/a")
      .folder("/tmp/b")
      .folder("/tmp/real")
      .link("real", "/tmp/link");
  EXPECT_EQ(placed(source, "/tmp/a"), done);
  EXPECT_EQ(placed(source, "/tmp/b/"), done);
  EXPECT_EQ(placed(source, "/tmp/link"), done);
  EXPECT_EQ(read_file("/tmp/a/source"), "text");
  EXPECT_EQ(read_file("/tmp/b/source"), "text");
  EXPECT_EQ(read_file("/tmp/real/source"), "text");
}

TEST(Cp, ReplacesTheFileThatStandsInTheFolder) {
  Appliance{}.file(source, "new").file("/tmp/a/source", "old");
  EXPECT_EQ(placed(source, "/tmp/a"), done);
  EXPECT_EQ(read_file("/tmp/a/source"), "new");
}

TEST(Cp, TakesRelativePaths) {
  Appliance{}.file("/tmp/here/source", "text").folder("/tmp/here/folder");
  ASSERT_EQ(::chdir("/tmp/here"), 0);
  EXPECT_EQ(placed("source", "folder"), done);
  EXPECT_EQ(placed("source", "target"), done);
  EXPECT_EQ(read_file("/tmp/here/folder/source"), "text");
  EXPECT_EQ(read_file("/tmp/here/target"), "text");
}

TEST(Cp, DestinationOfTheSameNameIsUsedAsItStands) {
  Appliance{}.file(source, "text").folder("/tmp/a").folder("/tmp/b/source");
  EXPECT_EQ(placed(source, "/tmp/a/source"), done);
  EXPECT_EQ(read_file("/tmp/a/source"), "text");
  EXPECT_EQ(placed(source, "/tmp/b/source"), failed("CP: dest file exist and can't remove"));
  EXPECT_EQ(names_in("/tmp/b/source"), Names{});
}

TEST(Cp, FolderThatHoldsTheSourceIsTheSource) {
  Appliance{}.file("/tmp/a/source", "text");
  EXPECT_EQ(placed("/tmp/a/source", "/tmp/a"), failed("CP: source & dest can't be the same"));
  EXPECT_EQ(read_file("/tmp/a/source"), "text");
}

TEST(Cp, MissingArgumentsAreRefusedSilently) {
  Appliance{}.file(source, "text");
  EXPECT_EQ(placed(nullptr, target), refused);
  EXPECT_EQ(placed("", target), refused);
  EXPECT_EQ(placed(source, nullptr), refused);
  EXPECT_EQ(placed(source, ""), refused);
}

TEST(Cp, SourceThatIsMissingOrAFolderIsRefusedSilently) {
  Appliance{}.folder("/tmp/folder").file("/tmp/file", "").link("/tmp/nowhere", "/tmp/dangling");
  for (const char *from : {"/tmp/missing", "/tmp/file/below", "/tmp/folder", "/tmp/dangling"}) {
    SCOPED_TRACE(from);
    EXPECT_EQ(placed(from, target), refused);
    EXPECT_FALSE(exists(target));
  }
}

TEST(Cp, SourceThatIsALinkIsRefused) {
  Appliance{}.file(source, "text").link(source, "/tmp/link");
  EXPECT_EQ(placed("/tmp/link", target).result, -1);
  EXPECT_FALSE(exists(target));
}

TEST(Cp, DestinationThatCannotBeExaminedIsRefusedSilently) {
  Appliance{}.file(source, "text").file("/tmp/file", "").link("/tmp/loop", "/tmp/loop");
  EXPECT_EQ(placed(source, "/tmp/file/below"), refused);
  EXPECT_EQ(placed(source, "/tmp/loop"), refused);
}

TEST(Cp, DestinationOfTheSameNameIsExaminedByTheCopy) {
  Appliance{}.file(source, "text").file("/tmp/file", "");
  EXPECT_EQ(placed(source, "/tmp/file/source"), failed("CP: can't stat dest"));
}

TEST(Cp, PathsHaveUpTo1023Bytes) {
  const std::string longest = path_of_length(1023);
  Appliance{}.file(source, "text");
  EXPECT_EQ(placed(source, longest.c_str()), done);
  EXPECT_EQ(read_file(longest), "text");
  EXPECT_EQ(placed(longest.c_str(), target), done);
  EXPECT_EQ(read_file(target), "text");
}

TEST(Cp, LongerPathsAreRefusedRatherThanCut) {
  const std::string longer = path_of_length(1024);
  const std::string cut = longer.substr(0, 1023);
  Appliance{}.file(source, "text").file(longer, "longer");
  EXPECT_EQ(placed(longer.c_str(), target).result, -1);
  EXPECT_FALSE(exists(target));
  EXPECT_EQ(placed(source, longer.c_str()).result, -1);
  EXPECT_EQ(read_file(longer), "longer");
  EXPECT_FALSE(exists(cut));
}

TEST(Cp, ASlashThatIsThereIsNotCountedTwice) {
  const std::string name = std::filesystem::path(source).filename();
  const std::string folder = path_of_length(1022 - name.size()) + "/";
  Appliance{}.file(source, "text").folder(folder);
  EXPECT_EQ(placed(source, folder.c_str()), done);
  EXPECT_EQ(read_file(folder + name), "text");
}

TEST(Cp, FolderTooLongForTheNameIsRefusedRatherThanCut) {
  const std::string folder = path_of_length(1018);
  Appliance{}.file(source, "text").folder(folder);
  EXPECT_EQ(placed(source, folder.c_str()).result, -1);
  EXPECT_EQ(names_in(folder), Names{});
}

} // namespace
} // namespace nasshare::tests
