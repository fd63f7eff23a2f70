#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "platform/posix/posix_file_system.h"
#include "support/expect_error.h"
#include "support/temporary_folder.h"

namespace tessel::posix {
namespace {

using test::ErrorNumberOf;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

class FileCopyTest : public testing::Test {
 protected:
  std::string In(std::string_view name) const { return folder_.Path(name); }

  test::TemporaryFolder folder_;
  PosixFileSystem files_{folder_.Path("drives")};
};

TEST_F(FileCopyTest, ContentModeAndTimeArriveForEverySize) {
  for (const std::size_t size : {0UL, 1UL, 131'072UL, 131'073UL, 3'000'000UL}) {
    std::string content(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
      content[i] = static_cast<char>(i * 31 >> 3);
    folder_.Write("from", content);
    fs::last_write_time(In("from"), fs::file_time_type::clock::now() - std::chrono::hours(50));
    files_.SetReadOnly(In("from"), true);
    files_.CopyFile(In("from"), In("to"), false);
    EXPECT_TRUE(folder_.Read("to") == content) << size;
    EXPECT_EQ(fs::last_write_time(In("to")), fs::last_write_time(In("from")));
    EXPECT_TRUE(files_.IsReadOnly(In("to")));
    fs::remove(In("to"));
    fs::remove(In("from"));
  }
  EXPECT_EQ(folder_.Tree(), Names{});
}

TEST_F(FileCopyTest, OverwritingReplacesTheWholeFile) {
  folder_.Write("from", "new");
  folder_.Write("to", "old and longer");
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFile(In("from"), In("to"), false); }), 58);
  EXPECT_EQ(folder_.Read("to"), "old and longer");
  files_.CopyFile(In("from"), In("to"), true);
  EXPECT_EQ(folder_.Read("to"), "new");
  files_.CopyFile(In("from"), In("from"), true);
  EXPECT_EQ(folder_.Read("from"), "new");
  EXPECT_EQ(folder_.Tree(), (Names{"from", "to"}));
}

TEST_F(FileCopyTest, APipeInPlaceOfAFileIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFile(In("pipe"), In("to"), false); }), 75);
}

TEST_F(FileCopyTest, TreesAreMergedIntoTheTarget) {
  folder_.Write("from/a", "new a");
  folder_.Write("from/sub/deep/b", "b");
  folder_.MakeFolder("from/empty");
  fs::create_symlink("a", In("from/link"));
  fs::permissions(In("from/sub/deep"), fs::perms::owner_read | fs::perms::owner_exec);
  folder_.Write("to/a", "old a");
  folder_.Write("to/link", "old link");
  folder_.Write("to/sub/kept", "kept");

  files_.CopyFolderContents(In("from"), In("to"));

  EXPECT_EQ(folder_.Tree("to"),
            (Names{"a", "empty/", "link", "sub/", "sub/deep/", "sub/deep/b", "sub/kept"}));
  EXPECT_EQ(folder_.Read("to/a"), "new a");
  EXPECT_EQ(fs::read_symlink(In("to/link")), "a");
  EXPECT_EQ(folder_.Read("to/sub/deep/b"), "b");
}

TEST_F(FileCopyTest, ALinkInTheTargetLeadsNowhereElse) {
  folder_.Write("from/sub/a", "x");
  folder_.MakeFolder("outside");
  folder_.MakeFolder("to");
  fs::create_directory_symlink(In("outside"), In("to/sub"));
  EXPECT_NE(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("to")); }), 0);
  EXPECT_EQ(folder_.Tree("outside"), Names{});
}

TEST_F(FileCopyTest, AFolderIsNotCopiedIntoItself) {
  folder_.Write("from/sub/a", "x");
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("from/sub")); }), 75);
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("from")); }), 75);
  EXPECT_EQ(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("none")); }), 76);
  EXPECT_EQ(folder_.Tree("from"), (Names{"sub/", "sub/a"}));
}

TEST_F(FileCopyTest, ACopyThatFailsLeavesNoPartialFile) {
  folder_.Write("from/a", "x");
  folder_.Write("from/b", "x");
  folder_.MakeFolder("to/b");
  EXPECT_NE(ErrorNumberOf([&] { files_.CopyFolderContents(In("from"), In("to")); }), 0);
  for (const std::string& entry : folder_.Tree("to"))
    EXPECT_TRUE(entry == "a" || entry == "b/") << entry;
}

}  // namespace
}  // namespace tessel::posix
