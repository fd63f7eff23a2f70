// The files of a ZIP archive, through libzip.
#include <zip.h>

#include <algorithm>
#include <map>
#include <set>

#include "received/file_source.h"

namespace tessel::received {
namespace {

struct CloseArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct CloseFile {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using ArchivePtr = std::unique_ptr<zip_t, CloseArchive>;
using FilePtr = std::unique_ptr<zip_file_t, CloseFile>;

ArchivePtr Open(const std::string& path) {
  int code = 0;
  // Consistency: the two directories of the archive have to agree.
  ArchivePtr archive(zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &code));
  if (archive) return archive;
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  const std::string cause = zip_error_strerror(&error);
  zip_error_fini(&error);
  throw ReadError("Cannot read " + path + " as a directory or a ZIP archive: " + cause);
}

std::string BareName(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.substr(0, name.rfind('.'));
}

// An absolute name or one that climbs; unpacked carelessly it would write elsewhere.
bool Leaves(const std::string& name) {
  if (name.starts_with('/') || name.find('\\') != std::string::npos) return true;
  const std::string framed = "/" + name + "/";
  return framed.find("/../") != std::string::npos || framed.find("/./") != std::string::npos;
}

class ArchiveSource final : public FileSource {
 public:
  explicit ArchiveSource(std::string path) : path_(std::move(path)), archive_(Open(path_)) {
    const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index)
      Take(static_cast<zip_uint64_t>(index));
    const std::string folder = OnlyFolder();
    name_ = folder.empty() ? BareName(path_) : folder;
    List(folder.empty() ? "" : folder + "/");
  }

  [[nodiscard]] const std::string& Path() const override { return path_; }
  [[nodiscard]] const std::string& Name() const override { return name_; }
  [[nodiscard]] const std::vector<Entry>& Entries() const override { return entries_; }

  [[nodiscard]] bool HasCheckSums() const override { return true; }

  void Read(const std::string& name, const PieceSink& piece) const override {
    const auto found = indexes_.find(name);
    if (found == indexes_.end()) throw ReadError("There is no " + name + " in " + path_);
    const FilePtr file(zip_fopen_index(archive_.get(), found->second, 0));
    if (!file) throw ReadError(name + " in " + path_ + ": " + zip_strerror(archive_.get()));
    std::vector<char> buffer(1U << 16U);
    zip_int64_t count = 0;
    while ((count = zip_fread(file.get(), buffer.data(), buffer.size())) > 0) {
      if (!piece({buffer.data(), static_cast<std::size_t>(count)})) return;
    }
    if (count < 0) throw ReadError(name + " in " + path_ + ": " + zip_file_strerror(file.get()));
  }

 private:
  struct Packed {
    std::string name;
    zip_uint64_t index;
    std::uint64_t size;
    bool readable;
  };

  void Take(zip_uint64_t index) {
    zip_stat_t status;
    if (zip_stat_index(archive_.get(), index, 0, &status) != 0 || (status.valid & ZIP_STAT_NAME) == 0) {
      throw ReadError("Cannot read " + path_ + ": " + zip_strerror(archive_.get()));
    }
    if (Leaves(status.name)) {
      throw ReadError(path_ + " holds the name \"" + status.name + "\", which leaves its directory");
    }
    packed_.push_back({status.name, index, status.size, !IsLink(index) && status.encryption_method == 0});
  }

  [[nodiscard]] bool IsLink(zip_uint64_t index) const {
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(archive_.get(), index, 0, &system, &attributes);
    constexpr zip_uint32_t kFormat = 0170000;
    constexpr zip_uint32_t kLink = 0120000;
    return system == ZIP_OPSYS_UNIX && ((attributes >> 16U) & kFormat) == kLink;
  }

  // The folder below which everything lies; empty when there is none such.
  [[nodiscard]] std::string OnlyFolder() const {
    std::string folder;
    for (const Packed& packed : packed_) {
      const auto slash = packed.name.find('/');
      if (slash == std::string::npos) return {};
      const std::string first = packed.name.substr(0, slash);
      if (!folder.empty() && folder != first) return {};
      folder = first;
    }
    return folder;
  }

  // Fills the entries. What lies deeper shows as its folder alone.
  void List(const std::string& prefix) {
    for (const Packed& packed : packed_) {
      const std::string name = packed.name.substr(prefix.size());
      if (name.empty()) continue;
      const auto slash = name.find('/');
      if (slash != std::string::npos) {
        const Entry folder{name.substr(0, slash), Entry::Kind::kFolder, 0};
        if (folders_.insert(folder.name).second) entries_.push_back(folder);
        continue;
      }
      entries_.push_back({name, packed.readable ? Entry::Kind::kFile : Entry::Kind::kOther, packed.size});
      indexes_[name] = packed.index;
    }
    std::ranges::stable_sort(entries_, {}, &Entry::name);
  }

  std::string path_;
  ArchivePtr archive_;
  std::string name_;
  std::vector<Packed> packed_;
  std::set<std::string> folders_;
  std::map<std::string, zip_uint64_t> indexes_;
  std::vector<Entry> entries_;
};

}  // namespace

std::unique_ptr<FileSource> OpenArchive(const std::string& path) {
  return std::make_unique<ArchiveSource>(path);
}

}  // namespace tessel::received
