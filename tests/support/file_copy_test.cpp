// copy_file: copying a file to a file, and every reason for which it is not copied.
#include "appliance.h"
#include "copied.h"
#include "debug_output.h"
#include "files.h"
#include "nasshare/support.h"
#include "next_definition.h"
#include "output.h"
#include "running_program.h"
#include "unopenable.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

bool closing_fails = false;

bool is_written(int descriptor) {
  const int flags = ::fcntl(descriptor, F_GETFL);
  return flags != -1 && (flags & O_ACCMODE) == O_WRONLY;
}

bool fails_to_close(int descriptor) {
  return closing_fails && is_written(descriptor);
}

Copied copied(const char *from, const char *to) {
  Captured captured;
  const int result = copy_file(from, to);
  return {result, captured.out()};
}

dev_t device(const std::string &path) {
  struct stat status = {};
  files::require(::stat(path.c_str(), &status) == 0, path);
  return status.st_dev;
}

void mount_small(const char *folder, const char *options) {
  files::make_folder(folder);
  files::require(::mount("small", folder, "tmpfs", 0, options) == 0, folder);
}

void mount_read_only(const char *path) {
  files::require(::mount(path, path, "", MS_BIND, nullptr) == 0, path);
  files::require(::mount(nullptr, path, "", MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) == 0, path);
}

// From here on root heeds the mode of files.
void heed_modes() {
  __user_cap_header_struct header{};
  header.version = _LINUX_CAPABILITY_VERSION_3;
  std::array<__user_cap_data_struct, 2> sets{};
  files::require(::syscall(SYS_capget, &header, sets.data()) == 0, "capget");
  sets[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
  files::require(::syscall(SYS_capset, &header, sets.data()) == 0, "capset");
}

std::string bytes(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text.push_back(static_cast<char>(i * 7 + i / 251));
  }
  return text;
}

TEST(FileCopy, CopiesEveryByte) {
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 100000U}) {
    SCOPED_TRACE(size);
    Appliance{}.file(source, bytes(size)).remove(target);
    EXPECT_EQ(copied(source, target), done);
    EXPECT_EQ(read_file(target), bytes(size));
    EXPECT_EQ(read_file(source), bytes(size));
  }
}

TEST(FileCopy, EmptySourceEmptiesTheTarget) {
  Appliance{}.file(source, "").file(target, "old");
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file(target), "");
}

TEST(FileCopy, ReplacesALongerTargetInPlace) {
  Appliance{}.file(source, "new").file(target, "old and longer");
  const ino_t before = inode(target);
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file(target), "new");
  EXPECT_EQ(inode(target), before);
}

TEST(FileCopy, NewTargetHasTheSourcesModeBelowTheUmask) {
  const struct {
    mode_t source;
    mode_t umask;
    mode_t target;
  } rows[] = {
      {0600, 022, 0600}, {0644, 022, 0644}, {0666, 022, 0644}, {0777, 0, 0777},
      {0640, 077, 0600}, {0400, 022, 0400}, {0000, 022, 0000},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(testing::Message() << std::oct << row.source);
    Appliance{}.file(source, "text", row.source).remove(target);
    ::umask(row.umask);
    EXPECT_EQ(copied(source, target), done);
    ::umask(022);
    EXPECT_EQ(mode(target), row.target);
  }
}

TEST(FileCopy, NewTargetHasTheSourcesSetUserIdBit) {
  Appliance{}.file(source, "text", 04755);
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(mode(target), 04755U);
}

TEST(FileCopy, ExistingTargetKeepsItsMode) {
  Appliance{}.file(source, "new", 0666).file(target, "old", 0600);
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(mode(target), 0600U);
}

TEST(FileCopy, TargetMayBeALinkToAFile) {
  Appliance{}.file(source, "new").file("/tmp/real", "old").link("/tmp/real", target);
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file("/tmp/real"), "new");
}

TEST(FileCopy, SourceThatCannotBeExamined) {
  Appliance{}.file("/tmp/file", "").link("/tmp/nowhere", "/tmp/dangling").file(target, "old");
  for (const char *from :
       {"/tmp/missing", "/tmp/file/below", "/tmp/dangling", "", static_cast<const char *>(nullptr)}) {
    SCOPED_TRACE(from == nullptr ? "null" : from);
    EXPECT_EQ(copied(from, target), failed("CP: cant' stat source"));
    EXPECT_EQ(read_file(target), "old");
  }
}

TEST(FileCopy, SourceThatIsAFolder) {
  Appliance{}.folder(source).link(source, "/tmp/link");
  EXPECT_EQ(copied(source, target), failed("CP: source can't be directory"));
  EXPECT_EQ(copied("/tmp/link", target), failed("CP: source can't be directory"));
  EXPECT_FALSE(exists(target));
}

TEST(FileCopy, SourceThatIsALink) {
  Appliance{}.file(source, "text").link(source, "/tmp/link");
  EXPECT_EQ(copied("/tmp/link", target), failed("CP: source can't be a link"));
  EXPECT_FALSE(exists(target));
}

TEST(FileCopy, FileOntoItself) {
  Appliance{}.file(source, "text").link(source, "/tmp/link");
  ASSERT_EQ(::link(source, "/tmp/second-name"), 0);
  for (const char *to : {source, "/tmp/../tmp/source", "/tmp/second-name", "/tmp/link"}) {
    SCOPED_TRACE(to);
    EXPECT_EQ(copied(source, to), failed("CP: source & dest can't be the same"));
    EXPECT_EQ(read_file(source), "text");
  }
}

TEST(FileCopy, FilesOfOneInodeOnTwoDevicesAreTwoFiles) {
  mount_small("/tmp/a", "size=64k");
  mount_small("/tmp/b", "size=64k");
  Appliance{}.file("/tmp/a/file", "new").file("/tmp/b/file", "old");
  ASSERT_EQ(inode("/tmp/a/file"), inode("/tmp/b/file"));
  ASSERT_NE(device("/tmp/a/file"), device("/tmp/b/file"));
  EXPECT_EQ(copied("/tmp/a/file", "/tmp/b/file"), done);
  EXPECT_EQ(read_file("/tmp/b/file"), "new");
}

TEST(FileCopy, FilesOfOneDeviceWithTwoInodesAreTwoFiles) {
  Appliance{}.file(source, "new").file(target, "old");
  ASSERT_EQ(device(source), device(target));
  EXPECT_EQ(copied(source, target), done);
}

TEST(FileCopy, TargetThatCannotBeExamined) {
  Appliance{}.file(source, "text").file("/tmp/file", "").link("/tmp/loop", "/tmp/loop");
  EXPECT_EQ(copied(source, "/tmp/file/below"), failed("CP: can't stat dest"));
  EXPECT_EQ(copied(source, "/tmp/loop"), failed("CP: can't stat dest"));
  EXPECT_EQ(copied(source, ("/tmp/" + std::string(256, 'n')).c_str()), failed("CP: can't stat dest"));
}

TEST(FileCopy, SourceThatIsNoRegularFileIsNotCopied) {
  ASSERT_EQ(::mkfifo("/tmp/pipe", 0600), 0);
  make_unopenable("/tmp/socket");
  for (const char *from : {"/dev/zero", "/tmp/pipe", "/tmp/socket"}) {
    SCOPED_TRACE(from);
    EXPECT_EQ(copied(from, target), done);
    EXPECT_FALSE(exists(target));
  }
  Appliance{}.file(target, "old");
  EXPECT_EQ(copied("/dev/null", target), done);
  EXPECT_EQ(read_file(target), "old");
}

TEST(FileCopy, SourceThatCannotBeOpened) {
  Appliance{}.file(source, "text", 0000).file(target, "old");
  heed_modes();
  EXPECT_EQ(copied(source, target), failed("CP: src fd open error"));
  EXPECT_EQ(read_file(target), "old");
}

TEST(FileCopy, ReadOnlyTargetIsDeletedAndMadeAnew) {
  Appliance{}.file(source, "new", 0640).file(target, "old", 0444);
  ASSERT_EQ(::link(target, "/tmp/second-name"), 0);
  heed_modes();
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file(target), "new");
  EXPECT_EQ(mode(target), 0640U);
  EXPECT_EQ(read_file("/tmp/second-name"), "old");
}

TEST(FileCopy, RunningProgramIsReplacedAndGoesOn) {
  const RunningProgram program = waiting_program(target);
  const ino_t before = inode(target);
  Appliance{}.file(source, "new");
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file(target), "new");
  EXPECT_NE(inode(target), before);
  EXPECT_TRUE(program.is_running());
}

TEST(FileCopy, DanglingLinkIsReplacedByTheFile) {
  Appliance{}.file(source, "text").link("/tmp/nowhere", target);
  EXPECT_EQ(copied(source, target), done);
  EXPECT_EQ(read_file(target), "text");
  EXPECT_FALSE(exists("/tmp/nowhere"));
}

TEST(FileCopy, TargetThatCanNeitherBeOpenedNorDeleted) {
  Appliance{}.file(source, "new").file(target, "old").folder("/tmp/folder").file("/tmp/sealed/file", "old");
  mount_read_only(target);
  mount_read_only("/tmp/sealed");
  for (const char *to :
       {target, "/tmp/sealed/file", "/tmp/sealed/none", "/tmp/folder", "/tmp/missing/file", ""}) {
    SCOPED_TRACE(to);
    EXPECT_EQ(copied(source, to), failed("CP: dest file exist and can't remove"));
  }
  EXPECT_EQ(read_file(target), "old");
  EXPECT_EQ(read_file("/tmp/sealed/file"), "old");
  EXPECT_EQ(names_in("/tmp/folder"), Names{});
}

TEST(FileCopy, TargetThatCannotBeMadeAnewIsGone) {
  Appliance{}.file(source, "new").file(target, "old");
  Captured captured;
  {
    const DescriptorLimit for_the_source_alone(1);
    EXPECT_EQ(copy_file(source, target), -1);
  }
  EXPECT_EQ(captured.out(), "CP: dest fd open error\n");
  EXPECT_FALSE(exists(target));
}

TEST(FileCopy, SourceCannotBeOpenedWithoutAFreeDescriptor) {
  Appliance{}.file(source, "new").file(target, "old");
  Captured captured;
  {
    const DescriptorLimit none(0);
    EXPECT_EQ(copy_file(source, target), -1);
  }
  EXPECT_EQ(captured.out(), "CP: src fd open error\n");
  EXPECT_EQ(read_file(target), "old");
}

TEST(FileCopy, FullDiskLeavesWhatWasWritten) {
  mount_small("/tmp/disk", "size=64k");
  Appliance{}.file(source, bytes(100000));
  EXPECT_EQ(copied(source, "/tmp/disk/target"), failed("CP: file copy error"));
  const std::string left = read_file("/tmp/disk/target");
  EXPECT_GT(left.size(), 0U);
  EXPECT_EQ(left, bytes(100000).substr(0, left.size()));
}

TEST(FileCopy, SourceThatCannotBeReadLeavesAnEmptyTarget) {
  EXPECT_EQ(copied("/proc/self/mem", target), failed("CP: file copy error"));
  EXPECT_EQ(read_file(target), "");
}

TEST(FileCopy, TargetThatCannotBeClosed) {
  Appliance{}.file(source, "text");
  closing_fails = true;
  EXPECT_EQ(copied(source, target), failed("CP: can't close dest fd"));
  closing_fails = false;
  EXPECT_EQ(read_file(target), "text");
}

TEST(FileCopy, FailedCopyIsClosedToo) {
  Appliance{}.file(source, "text");
  closing_fails = true;
  EXPECT_EQ(copied(source, "/dev/full"), failed("CP: file copy error\nCP: can't close dest fd"));
  closing_fails = false;
}

TEST(FileCopy, NoOutcomeLeavesADescriptorOpen) {
  Appliance{}.file(source, "text").folder("/tmp/folder");
  const DescriptorLimit few(6);
  for (int i = 0; i < 8; ++i) {
    Captured captured;
    copy_file(source, target);
    copy_file(source, "/tmp/folder");
    copy_file(source, "/dev/full");
    EXPECT_EQ(captured.out(), "CP: dest file exist and can't remove\nCP: file copy error\n");
  }
}

TEST(FileCopy, MessagesAreIndependentOfTheFlag) {
  const auto copy = [] {
    EXPECT_EQ(copy_file("/tmp/missing", target), -1);
    Appliance{}.file(source, "text");
    EXPECT_EQ(copy_file(source, target), 0);
  };
  expect_output(copy, [](int /*flag*/) { return "CP: cant' stat source\n"; });
}

TEST(FileCopy, MissingTargetIsRefused) {
  Appliance{}.file(source, "text");
  EXPECT_EQ(copy_file(source, nullptr), -1);
}

} // namespace
} // namespace nasshare::tests

// A file server may tell only when a file is closed that it could not store it.
extern "C" [[gnu::visibility("default")]] int close(int descriptor) {
  static auto *const function = nasshare::tests::next_definition<int(int)>("close");
  const bool fails = nasshare::tests::fails_to_close(descriptor);
  const int result = function(descriptor);
  if (!fails) {
    return result;
  }
  errno = EIO;
  return -1;
}
