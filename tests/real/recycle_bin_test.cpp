// Where deleted files go.
#include "appliance.h"
#include "samba_machine.h"

#include <string>

namespace nasshare::tests {
namespace {

std::string in_bin(const std::string &path) {
  return "/mnt/HD/HD_a2/recycle/" + path;
}

class RecycleBin : public SambaMachine {};

Share docs() {
  return Share{"Docs"}.path("/mnt/HD/HD_a2/Docs").everyone();
}

// The account stores a file and deletes it again.
void store_and_delete(const std::string &account, const std::string &folder = "") {
  shell("echo text >/tmp/note.txt");
  const std::string enter = folder.empty() ? "" : "mkdir " + folder + "; cd " + folder + "; ";
  const Ended ended = client(account, "Docs", enter + "put /tmp/note.txt note.txt; rm note.txt");
  ASSERT_EQ(ended.status, 0) << ended.out;
}

TEST_F(RecycleBin, AFlatBinKeepsTheFileAlone) {
  serve(docs().recycle(1, 0));
  store_and_delete("alice", "letters");
  EXPECT_EQ(read_file(in_bin("alice/note.txt")), "text\n");
  EXPECT_FALSE(exists(in_bin("alice/letters")));
}

TEST_F(RecycleBin, ATreeBinKeepsTheFolderToo) {
  serve(docs().recycle(1, 1));
  store_and_delete("alice", "letters");
  EXPECT_EQ(read_file(in_bin("alice/letters/note.txt")), "text\n");
  EXPECT_FALSE(exists(in_bin("alice/note.txt")));
}

TEST_F(RecycleBin, TheFileIsGoneFromTheShare) {
  serve(docs().recycle(1, 0));
  store_and_delete("alice");
  EXPECT_EQ(names_in("/mnt/HD/HD_a2/Docs"), Names{"welcome.txt"});
}

TEST_F(RecycleBin, ASecondFileOfTheNameDoesNotReplaceTheFirst) {
  serve(docs().recycle(1, 0));
  store_and_delete("alice");
  store_and_delete("alice");
  EXPECT_EQ(names_in(in_bin("alice")).size(), 2U);
}

TEST_F(RecycleBin, EveryUserHasOneAndTheGuestToo) {
  serve(docs().recycle(1, 0));
  store_and_delete("bob");
  store_and_delete(guest);
  EXPECT_TRUE(exists(in_bin("bob/note.txt")));
  EXPECT_TRUE(exists(in_bin("nobody/note.txt")));
  EXPECT_EQ(names_in(in_bin("alice")), Names{});
}

TEST_F(RecycleBin, WithoutOneTheFileIsDeleted) {
  serve(docs());
  store_and_delete("alice");
  EXPECT_FALSE(exists(in_bin("")));
}

TEST_F(RecycleBin, AVolumeRootHasOneToo) {
  serve(Share{"Docs"}.path("/mnt/HD/HD_a2").everyone().recycle(1, 0));
  store_and_delete("alice");
  EXPECT_TRUE(exists(in_bin("alice/note.txt")));
}

TEST_F(RecycleBin, AFolderFurtherDownUsesTheBinOfItsVolume) {
  serve(Share{"Docs"}.path("/mnt/HD/HD_b2/a/b").everyone().recycle(1, 0));
  store_and_delete("alice");
  EXPECT_TRUE(exists("/mnt/HD/HD_b2/recycle/alice/note.txt"));
}

TEST_F(RecycleBin, ItsOwnShareShowsEveryUserTheirFiles) {
  serve(docs().recycle(1, 0));
  store_and_delete("alice");
  EXPECT_EQ(client("alice", "Recycle Bin - Volume_1", "get note.txt /tmp/restored").status, 0);
  EXPECT_EQ(read_file("/tmp/restored"), "text\n");
  EXPECT_NE(client("bob", "Recycle Bin - Volume_1", "get note.txt /tmp/stolen").status, 0);
}

} // namespace
} // namespace nasshare::tests
