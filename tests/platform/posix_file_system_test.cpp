// Links, permissions, pipes and devices; what all adapters keep to is in file_system_test.cpp.
#include "platform/posix/posix_file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/expect_error.h"
#include "support/temporary_folder.h"

namespace tessel::posix {
namespace {

using test::ErrorNumberOf;
using test::ErrorOf;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

class PosixFileSystemTest : public testing::Test {
 protected:
  std::string In(std::string_view name) const { return folder_.Path(name); }

  test::TemporaryFolder folder_;
  PosixFileSystem files_{folder_.Path("drives")};
};

TEST_F(PosixFileSystemTest, NotThereAndCannotTellAreTwoAnswers) {
  fs::create_symlink("loop", In("loop"));
  fs::create_symlink("none", In("dangling"));
  EXPECT_FALSE(files_.FileExists(In("dangling")) || files_.FolderExists(In("dangling")));
  for (const std::string& path : {In("loop"), In(std::string(300, 'x'))}) {
    EXPECT_EQ(ErrorNumberOf([&] { (void)files_.FileExists(path); }), 75) << path;
    EXPECT_EQ(ErrorNumberOf([&] { (void)files_.FolderExists(path); }), 75) << path;
  }
  EXPECT_EQ(ErrorOf([&] { (void)files_.FileExists(In("loop")); }),
            "75 Cannot look for \"" + In("loop") + "\": Too many levels of symbolic links");
}

TEST_F(PosixFileSystemTest, AFolderWithADanglingLinkIsMadeDurable) {
  folder_.MakeFolder("tree");
  fs::create_symlink("none", In("tree/dangling"));
  files_.MakeDurable(In("tree"));
}

TEST_F(PosixFileSystemTest, AFullDiskHasItsNumber) {
  if (!files_.FileExists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  EXPECT_EQ(ErrorNumberOf([&] { files_.AppendBytes("/dev/full", "x"); }), 61);
}

TEST_F(PosixFileSystemTest, DeletesReadOnlyThingsAndNeverFollowsLinks) {
  folder_.Write("outside/kept.txt", "x");
  folder_.Write("tree/sub/deep/file", "x");
  folder_.Write("tree/.hidden", "x");
  fs::create_directory_symlink(In("outside"), In("tree/sub/link"));
  fs::create_symlink(In("none"), In("tree/dangling"));
  files_.SetReadOnly(In("tree/sub/deep/file"), true);
  fs::permissions(In("tree/sub/deep"), fs::perms::owner_read | fs::perms::owner_exec);
  fs::permissions(In("tree/sub"), fs::perms::none);
  files_.DeleteFolder(In("tree") + "/");
  EXPECT_EQ(folder_.Tree(), (Names{"outside/", "outside/kept.txt"}));

  fs::create_directory_symlink(In("outside"), In("link"));
  files_.DeleteFolder(In("link/"));
  EXPECT_EQ(folder_.Tree(), (Names{"outside/", "outside/kept.txt"}));
}

TEST_F(PosixFileSystemTest, LinksAreListedAsWhatTheyLeadTo) {
  folder_.Write("a", "");
  folder_.MakeFolder("z");
  fs::create_symlink(In("a"), In("toFile"));
  fs::create_directory_symlink(In("z"), In("toFolder"));
  EXPECT_EQ(files_.ListFiles(In("")), (Names{"a", "toFile"}));
  EXPECT_EQ(files_.ListFolders(In("")), (Names{"toFolder", "z"}));
}

TEST_F(PosixFileSystemTest, FilesWithoutASizeAreReadToTheirEnd) {
  if (!files_.FileExists("/proc/self/status")) GTEST_SKIP() << "no process file system";
  EXPECT_NE(files_.ReadBytes("/proc/self/status").find("Pid:"), std::string::npos);
}

TEST_F(PosixFileSystemTest, APipeInPlaceOfAFileIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFile(In("pipe"), In("to"), false); }), 75);
}

TEST_F(PosixFileSystemTest, LinksAndModesAreCopiedAsTheyAre) {
  folder_.Write("from/sub/b", "b");
  fs::create_symlink("sub/b", In("from/link"));
  fs::permissions(In("from/sub"), fs::perms::owner_read | fs::perms::owner_exec);
  folder_.Write("to/link", "old link");
  files_.CopyFolderContents(In("from"), In("to"));
  EXPECT_EQ(folder_.Tree("to"), (Names{"link", "sub/", "sub/b"}));
  EXPECT_EQ(fs::read_symlink(In("to/link")), "sub/b");
}

TEST_F(PosixFileSystemTest, ALinkInTheTargetLeadsNowhereElse) {
  folder_.Write("from/sub/a", "x");
  folder_.MakeFolder("outside");
  folder_.MakeFolder("to");
  fs::create_directory_symlink(In("outside"), In("to/sub"));
  EXPECT_NE(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("to")); }), 0);
  EXPECT_EQ(folder_.Tree("outside"), Names{});
}

}  // namespace
}  // namespace tessel::posix
