#include "received/file_source.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace tessel::received {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPieceSize = 1U << 16U;

fs::path NativePath(std::string_view utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

class DirectorySource final : public FileSource {
 public:
  explicit DirectorySource(std::string path) : path_(std::move(path)), folder_(NativePath(path_)) {
    const fs::path whole = fs::weakly_canonical(folder_);
    name_ = Utf8(whole.filename());
    for (const auto& entry : fs::directory_iterator(folder_))
      entries_.push_back(EntryOf(entry));
    std::ranges::sort(entries_, {}, &Entry::name);
  }

  [[nodiscard]] const std::string& Path() const override { return path_; }
  [[nodiscard]] const std::string& Name() const override { return name_; }
  [[nodiscard]] const std::vector<Entry>& Entries() const override { return entries_; }

  [[nodiscard]] bool HasCheckSums() const override { return false; }

  void Read(const std::string& name, const PieceSink& piece) const override {
    std::ifstream file(folder_ / NativePath(name), std::ios::binary);
    if (!file) throw ReadError("Cannot open " + Utf8(folder_ / NativePath(name)));
    std::vector<char> buffer(kPieceSize);
    while (file.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || file.gcount() > 0) {
      if (!piece({buffer.data(), static_cast<std::size_t>(file.gcount())})) return;
    }
    if (file.bad()) throw ReadError("Cannot read " + Utf8(folder_ / NativePath(name)));
  }

 private:
  static Entry EntryOf(const fs::directory_entry& entry) {
    const fs::file_status status = entry.symlink_status();
    Entry found{Utf8(entry.path().filename()), Entry::Kind::kOther, 0};
    if (fs::is_directory(status)) found.kind = Entry::Kind::kFolder;
    if (fs::is_regular_file(status)) {
      found.kind = Entry::Kind::kFile;
      found.size = entry.file_size();
    }
    return found;
  }

  std::string path_;
  fs::path folder_;
  std::string name_;
  std::vector<Entry> entries_;
};

}  // namespace

bool FileSource::Has(std::string_view name) const {
  const auto found = std::ranges::lower_bound(Entries(), name, {}, &Entry::name);
  return found != Entries().end() && found->name == name && found->kind == Entry::Kind::kFile;
}

std::string FileSource::ReadAll(const std::string& name) const {
  std::string bytes;
  Read(name, [&bytes](std::string_view piece) {
    bytes += piece;
    return true;
  });
  return bytes;
}

std::string FileSource::ReadBeginning(const std::string& name, std::size_t bytes) const {
  std::string beginning;
  Read(name, [&](std::string_view piece) {
    beginning += piece.substr(0, bytes - beginning.size());
    return beginning.size() < bytes;
  });
  return beginning;
}

std::unique_ptr<FileSource> OpenSource(const std::string& path) {
  try {
    const fs::file_status status = fs::status(NativePath(path));
    if (!fs::exists(status)) throw ReadError("There is no " + path);
    if (fs::is_directory(status)) return std::make_unique<DirectorySource>(path);
  } catch (const fs::filesystem_error& error) {
    throw ReadError("Cannot read " + path + ": " + error.code().message());
  }
  return OpenArchive(path);
}

}  // namespace tessel::received
