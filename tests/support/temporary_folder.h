// A folder of its own for one test, removed with everything in it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      folder_ = Root() / ("tessel-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directories(folder_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string Path() const { return folder_.generic_string(); }
  // The path of something in the folder, which need not exist.
  [[nodiscard]] std::string Path(std::string_view relative) const {
    return (folder_ / relative).generic_string();
  }

  // Makes a folder and its parents.
  std::string MakeFolder(std::string_view relative) const {
    std::filesystem::create_directories(folder_ / relative);
    return Path(relative);
  }
  // Writes a file, with the folders above it, and returns its path.
  std::string Write(std::string_view relative, std::string_view bytes) const {
    std::filesystem::create_directories((folder_ / relative).parent_path());
    std::ofstream file(folder_ / relative, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("Cannot write " + Path(relative));
    return Path(relative);
  }
  [[nodiscard]] std::string Read(std::string_view relative) const {
    std::ifstream file(folder_ / relative, std::ios::binary);
    if (!file) throw std::runtime_error("Cannot read " + Path(relative));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  [[nodiscard]] bool Exists(std::string_view relative) const {
    return std::filesystem::exists(std::filesystem::symlink_status(folder_ / relative));
  }

  // Everything below the folder (or one in it), sorted: "a.txt", "sub/", "sub/b.txt".
  [[nodiscard]] std::vector<std::string> Tree(std::string_view relative = {}) const {
    const std::filesystem::path root = relative.empty() ? folder_ : folder_ / relative;
    std::vector<std::string> entries;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      const bool isFolder = !entry.is_symlink() && entry.is_directory();
      entries.push_back(entry.path().lexically_relative(root).generic_string() + (isFolder ? "/" : ""));
    }
    std::sort(entries.begin(), entries.end());
    return entries;
  }

 private:
  // On Windows a path without a drive, as drive paths lead below the tests' own drives.
  static std::filesystem::path Root() {
#ifdef _WIN32
    return "/tmp";
#else
    return std::filesystem::temp_directory_path();
#endif
  }

  std::filesystem::path folder_;
};

}  // namespace tessel::test
