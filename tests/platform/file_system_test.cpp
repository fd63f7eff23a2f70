// What every file system adapter keeps to. What only one system knows is in a test of its own.
#include "platform/file_system.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <thread>

#include "support/expect_error.h"
#include "support/native_adapters.h"
#include "support/temporary_folder.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;
namespace fs = std::filesystem;

class FileSystemTest : public testing::Test {
 protected:
  std::string In(std::string_view name) const { return folder_.Path(name); }

  TemporaryFolder folder_;
  NativeFileSystem files_{folder_.Path("drives")};
};

TEST_F(FileSystemTest, DrivePathsWorkFromTheFirstWriteOn) {
  EXPECT_FALSE(files_.FolderExists(R"(C:\temp)"));
  files_.CreateFolders(R"(C:\temp\Exchange)");
  files_.CreateFolder(R"(c:\logs)");
  files_.AppendBytes(R"(D:\x.log)", "1");
  files_.WriteBytes(R"(C:\temp/Exchange\a.xml)", "2");
  EXPECT_EQ(folder_.Tree("drives"), (Names{"C/", "C/logs/", "C/temp/", "C/temp/Exchange/",
                                           "C/temp/Exchange/a.xml", "D/", "D/x.log"}));
  EXPECT_EQ(files_.NativePath(R"(C:\logs)"), In("drives/C/logs"));
  EXPECT_EQ(files_.ListFolders(R"(C:\)"), (Names{"logs", "temp"}));
}

TEST_F(FileSystemTest, FailuresCarryTheClassicNumbers) {
  folder_.Write("file", "x");
  folder_.MakeFolder("folder");
  struct Case {
    const char* what;
    int number;
    std::function<void()> action;
  };
  const Case cases[] = {
      {"folder exists", 58, [&] { files_.CreateFolder(In("folder")); }},
      {"file in its place", 58, [&] { files_.CreateFolder(In("file")); }},
      {"file in the way", 58, [&] { files_.CreateFolders(In("file")); }},
      {"no parent", 76, [&] { files_.CreateFolder(In("none/x")); }},
      {"nothing to delete", 76, [&] { files_.DeleteFolder(In("none")); }},
      {"delete a file as folder", 76, [&] { files_.DeleteFolder(In("file")); }},
      {"no file to delete", 53, [&] { files_.DeleteFile(In("none")); }},
      {"no folder of the file", 76, [&] { files_.DeleteFile(In("none/x")); }},
      {"read nothing", 53, [&] { (void)files_.ReadBytes(In("none")); }},
      {"read in no folder", 76, [&] { (void)files_.ReadBytes(In("none/x")); }},
      {"read a folder", 75, [&] { (void)files_.ReadBytes(In("folder")); }},
      {"write over a folder", 75, [&] { files_.WriteBytes(In("folder"), "x"); }},
      {"write into nowhere", 76, [&] { files_.WriteBytes(In("none/x"), "x"); }},
      {"append into nowhere", 76, [&] { files_.AppendBytes(In("none/x"), "x"); }},
      {"list nothing", 76, [&] { (void)files_.ListFiles(In("none")); }},
      {"list a file", 76, [&] { (void)files_.ListFiles(In("file")); }},
      {"move onto something", 58, [&] { files_.Move(In("file"), In("folder")); }},
      {"move nothing", 53, [&] { files_.Move(In("none"), In("new")); }},
      {"copy nothing", 53, [&] { files_.CopyFile(In("none"), In("new"), true); }},
      {"copy onto itself", 58, [&] { files_.CopyFile(In("file"), In("file"), false); }},
      {"copy into nowhere", 76, [&] { files_.CopyFile(In("file"), In("none/x"), false); }},
      {"copy a folder as file", 75, [&] { files_.CopyFile(In("folder"), In("new"), false); }},
      {"attributes of nothing", 53, [&] { (void)files_.IsReadOnly(In("none")); }},
      {"name too long", 75, [&] { files_.WriteBytes(In(std::string(300, 'x')), "x"); }},
      {"NUL in the path", 75, [&] { files_.WriteBytes(In("a") + std::string(1, '\0'), "x"); }},
  };
  for (const Case& each : cases)
    EXPECT_EQ(ErrorNumberOf(each.action), each.number) << each.what;
  const std::string error = ErrorOf([&] { files_.CreateFolder(In("none/x")); });
  EXPECT_EQ(error.rfind("76 Cannot create folder \"" + In("none/x") + "\": ", 0), 0U) << error;
  EXPECT_EQ(folder_.Tree(), (Names{"file", "folder/"}));
}

TEST_F(FileSystemTest, AHeldFileIsFreeWhenItsHolderIsGone) {
  EXPECT_EQ(files_.Hold(In("work"), false), nullptr) << "there is none";
  auto held = files_.Hold(In("work"), true);
  ASSERT_NE(held, nullptr);
  held->Append("one\n");
  held->Append("two\n");
  EXPECT_EQ(files_.Hold(In("work"), true), nullptr) << "somebody holds it";
  held.reset();
  held = files_.Hold(In("work"), false);
  ASSERT_NE(held, nullptr);
  EXPECT_EQ(held->Read(), "one\ntwo\n");
  files_.MakeDurable(In(""));
  held->Delete();
  files_.SyncFolder(In(""));
  EXPECT_FALSE(files_.FileExists(In("work")));
  EXPECT_EQ(ErrorNumberOf([&] { files_.MakeDurable(In("gone")); }), 76);
}

TEST_F(FileSystemTest, NotThereAndTheOtherKindAreFalse) {
  folder_.Write("file", "x");
  folder_.MakeFolder("folder");
  for (const std::string& path : {In("none"), In("file/x"), In("a") + std::string(1, '\0')}) {
    EXPECT_FALSE(files_.FileExists(path)) << path;
    EXPECT_FALSE(files_.FolderExists(path)) << path;
  }
  EXPECT_TRUE(files_.FileExists(In("file")) && !files_.FolderExists(In("file")));
  EXPECT_TRUE(files_.FolderExists(In("folder")) && !files_.FileExists(In("folder")));
}

// Runs an action on several threads at once; how many ended with each error number, 0 for none.
std::map<int, int> Race(int threads, const std::function<void(int)>& action) {
  std::vector<int> errors(static_cast<std::size_t>(threads));
  std::vector<std::thread> running;
  for (int i = 0; i < threads; ++i) {
    running.emplace_back([&, i] { errors[static_cast<std::size_t>(i)] = ErrorNumberOf([&] { action(i); }); });
  }
  std::map<int, int> counts;
  for (int i = 0; i < threads; ++i) {
    running[static_cast<std::size_t>(i)].join();
    ++counts[errors[static_cast<std::size_t>(i)]];
  }
  return counts;
}

TEST_F(FileSystemTest, OfManyMovesToOneNameOneWins) {
  for (const bool folders : {false, true}) {
    for (int i = 0; i < 8; ++i)
      folder_.Write(std::string("from") + std::to_string(i) + (folders ? "/file" : ""), "x");
    EXPECT_EQ(Race(8, [&](int i) { files_.Move(In("from" + std::to_string(i)), In("to")); }),
              (std::map<int, int>{{0, 1}, {58, 7}}));
    EXPECT_EQ(folder_.Tree().size(), folders ? 16U : 8U);
    fs::remove_all(folder_.Path());
    fs::create_directory(folder_.Path());
  }
}

TEST_F(FileSystemTest, ManyMayDeleteOneFolder) {
  for (int i = 0; i < 400; ++i)
    folder_.Write("tree/" + std::to_string(i % 20) + "/" + std::to_string(i), "");
  const auto counts = Race(4, [&](int) { files_.DeleteFolder(In("tree")); });
  for (const auto& [error, count] : counts)
    EXPECT_TRUE(error == 0 || error == 76) << error;
  EXPECT_EQ(folder_.Tree(), Names{});
}

TEST_F(FileSystemTest, FoldersAreMadeDurable) {
  folder_.Write("tree/sub/file", "x");
  files_.MakeDurable(In("tree"));
  files_.SyncFolder(In("tree"));
  for (const std::string& missing : {In("none"), In("tree/sub/file")}) {
    EXPECT_EQ(ErrorNumberOf([&] { files_.MakeDurable(missing); }), 76);
    EXPECT_EQ(ErrorNumberOf([&] { files_.SyncFolder(missing); }), 76);
  }
}

TEST_F(FileSystemTest, AFailedWriteLeavesTheOldFileAlone) {
  const std::string path = folder_.Write("a.xml", "old");
  const auto fail = [](const FileSystem::ByteSink& sink) {
    sink(std::string(200'000, 'x'));
    throw RuntimeError(5, "refused");
  };
  EXPECT_EQ(ErrorOf([&] { files_.WriteStream(path, fail); }), "5 refused");
  EXPECT_EQ(folder_.Read("a.xml"), "old");
  EXPECT_EQ(folder_.Tree(), Names{"a.xml"});
}

TEST_F(FileSystemTest, PiecesOfEverySizeArriveInOrder) {
  std::string expected;
  files_.WriteStream(In("out"), [&](const FileSystem::ByteSink& sink) {
    for (const std::size_t size : {1UL, 65'535UL, 65'536UL, 65'537UL, 0UL, 200'000UL, 3UL}) {
      const std::string piece(size, static_cast<char>('a' + size % 26));
      expected += piece;
      sink(piece);
    }
  });
  EXPECT_EQ(files_.ReadBytes(In("out")), expected);
}

TEST_F(FileSystemTest, LinesEndWithLfOrCrLf) {
  const std::string longLine(150'000, 'y');
  folder_.Write("lines", "a\r\nb\n\n" + longLine + "\r\nlone\rcr\nlast");
  Names lines;
  files_.ReadLines(In("lines"), [&](std::string_view line) {
    lines.emplace_back(line);
    return true;
  });
  EXPECT_EQ(lines, (Names{"a", "b", "", longLine, "lone\rcr", "last"}));

  lines.clear();
  files_.ReadLines(In("lines"), [&](std::string_view line) {
    lines.emplace_back(line);
    return lines.size() < 2;
  });
  EXPECT_EQ(lines, (Names{"a", "b"}));
  folder_.Write("empty", "");
  files_.ReadLines(In("empty"), [](std::string_view) -> bool { throw RuntimeError(5, "no line expected"); });
}

TEST_F(FileSystemTest, ReadOnlyThingsAreDeletedWithTheirFolder) {
  folder_.Write("tree/sub/deep/file", "x");
  folder_.Write("tree/.hidden", "x");
  folder_.Write("kept", "x");
  files_.SetReadOnly(In("tree/sub/deep/file"), true);
  EXPECT_TRUE(files_.IsReadOnly(In("tree/sub/deep/file")));
  files_.DeleteFolder(In("tree") + "/");
  EXPECT_EQ(folder_.Tree(), Names{"kept"});
}

TEST_F(FileSystemTest, ListsFilesAndFoldersApartAndSorted) {
  files_.CreateFolder(In("list"));
  for (const char* name : {"b", "a", "C", ".h", "with blank", "\xC3\xA4\xE2\x82\xAC"})
    files_.WriteBytes(In("list/") + name, "");
  files_.CreateFolder(In("list/z"));
  EXPECT_EQ(files_.ListFiles(In("list")), (Names{".h", "C", "a", "b", "with blank", "\xC3\xA4\xE2\x82\xAC"}));
  EXPECT_EQ(files_.ListFolders(In("list")), Names{"z"});
}

// Longer than a path of Windows may be without a mark of its own.
TEST_F(FileSystemTest, LongPathsAreOrdinaryPaths) {
  std::string folder = In("long");
  while (folder.size() < 400)
    folder += "/a name of thirty characters...x";
  files_.CreateFolders(folder);
  files_.WriteBytes(folder + "/a", "x");
  files_.CopyFile(folder + "/a", folder + "/b", false);
  files_.Move(folder + "/b", folder + "/c");
  EXPECT_EQ(files_.ListFiles(folder), (Names{"a", "c"}));
  EXPECT_EQ(files_.ReadBytes(folder + "/c"), "x");
  files_.DeleteFolder(In("long"));
  EXPECT_FALSE(files_.FolderExists(In("long")));
}

class FileCopyTest : public FileSystemTest {};

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
    for (const char* name : {"from", "to"}) {
      files_.SetReadOnly(In(name), false);
      files_.DeleteFile(In(name));
    }
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

TEST_F(FileCopyTest, ACopyTellsHowFarItIsAndCanBeEnded) {
  constexpr std::uint64_t kSize = 20'000'000;
  folder_.Write("from", "x");
  fs::resize_file(In("from"), kSize);
  folder_.Write("to", "old");
  std::vector<std::uint64_t> steps;
  const auto watch = [&](std::uint64_t done, std::uint64_t all) {
    EXPECT_EQ(all, kSize);
    steps.push_back(done);
    return steps.size() > 1;
  };
  EXPECT_FALSE(files_.CopyFile(In("from"), In("to"), true, watch));
  EXPECT_EQ(folder_.Read("to"), "old");
  EXPECT_EQ(folder_.Tree(), (Names{"from", "to"}));

  EXPECT_TRUE(files_.CopyFile(In("from"), In("to"), true, watch));
  EXPECT_TRUE(std::is_sorted(steps.begin() + 1, steps.end()));
  EXPECT_EQ(steps.back(), kSize);
  EXPECT_EQ(fs::file_size(In("to")), kSize);
}

TEST_F(FileCopyTest, AFileThatChangesMeanwhileIsRefused) {
  folder_.Write("from", std::string(1'000'000, 'a'));
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    for (int second = 1; !stop; ++second)
      fs::last_write_time(In("from"), fs::file_time_type(std::chrono::seconds(second)));
  });
  // The writer may be held up during one copy, but not during all of them.
  int error = 0;
  for (int attempt = 0; attempt < 2000 && error == 0; ++attempt)
    error = ErrorNumberOf([&] { files_.CopyFile(In("from"), In("to"), true); });
  stop = true;
  writer.join();
  EXPECT_EQ(error, 75);
  for (const std::string& entry : folder_.Tree())
    EXPECT_TRUE(entry == "from" || entry == "to") << entry;
  files_.CopyFile(In("from"), In("to"), true);
}

TEST_F(FileCopyTest, TreesAreMergedIntoTheTarget) {
  folder_.Write("from/a", "new a");
  folder_.Write("from/sub/deep/b", "b");
  folder_.MakeFolder("from/empty");
  folder_.Write("to/a", "old a");
  folder_.Write("to/sub/kept", "kept");
  files_.SetReadOnly(In("to/a"), true);

  files_.CopyFolderContents(In("from"), In("to"));

  EXPECT_EQ(folder_.Tree("to"), (Names{"a", "empty/", "sub/", "sub/deep/", "sub/deep/b", "sub/kept"}));
  EXPECT_EQ(folder_.Read("to/a"), "new a");
  EXPECT_EQ(folder_.Read("to/sub/deep/b"), "b");
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
}  // namespace tessel::test
