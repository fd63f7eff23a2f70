#include "sender/exchange_directory.h"

#include <algorithm>

#include "platform/paths.h"
#include "sender/status_texts.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr Place kPlaces[] = {Place::kQueued, Place::kSent, Place::kStopped};
constexpr const char* kWorkFolder = "KestrixServMon";

class Lister {
 public:
  Lister(const FileSystem& files, const std::vector<std::string>& except) : files_(files), except_(except) {}

  void Folder(const std::string& path, const std::string& prefix) {
    for (const auto& [name, kind] : EntriesOf(files_.NativePath(path))) {
      const bool folder = kind == EntryKind::kFolder;
      if (folder && prefix.empty() && name == kWorkFolder) continue;
      const std::string inside = prefix + CheckedName(path, name);
      if (folder) {
        Folder(paths::Join(path, name), inside + "/");
      } else {
        File(paths::Join(path, name), inside);
      }
    }
  }
  [[nodiscard]] std::vector<Document> Take() {
    std::sort(documents_.begin(), documents_.end(),
              [](const Document& left, const Document& right) { return left.name < right.name; });
    return std::move(documents_);
  }

 private:
  static const std::string& CheckedName(const std::string& folder, const std::string& name) {
    if (paths::IsPlainFileName(name)) return name;
    throw Reason(StatusText::kNotPlainName, {name, folder}, error_number::kPathFileAccess);
  }
  void File(const std::string& path, const std::string& name) {
    if (std::find(except_.begin(), except_.end(), name) != except_.end()) return;
    const long long size = RegularFileSize(files_.NativePath(path));
    if (size < 0 || name == kWorkFolder)
      throw Reason(StatusText::kNotSendable, {path}, error_number::kPathFileAccess);
    documents_.push_back({name, size});
  }

  const FileSystem& files_;
  const std::vector<std::string>& except_;
  std::vector<Document> documents_;
};

}  // namespace

const char* SuffixOf(Place place) {
  switch (place) {
    case Place::kSent:
      return "_Sent";
    case Place::kStopped:
      return "_Break";
    default:
      return "_New";
  }
}

std::string ExchangeDirectory::Path() const {
  return paths::Join(parent, Name());
}

std::string ExchangeDirectory::In(const std::string& name) const {
  return paths::Join(Path(), name);
}

std::string ExchangeDirectory::WorkFolder() const {
  return In(kWorkFolder);
}

std::optional<ExchangeDirectory> AsExchangeDirectory(const std::string& parent, const std::string& name) {
  for (const Place place : kPlaces) {
    const std::string_view suffix = SuffixOf(place);
    if (name.size() > suffix.size() && name.ends_with(suffix)) {
      return ExchangeDirectory{parent, name.substr(0, name.size() - suffix.size()), place};
    }
  }
  return std::nullopt;
}

std::vector<ExchangeDirectory> ListExchanges(const FileSystem& files, const std::string& parent) {
  std::vector<ExchangeDirectory> found;
  if (!files.FolderExists(parent)) return found;
  for (const std::string& name : files.ListFolders(parent)) {
    if (auto directory = AsExchangeDirectory(parent, name)) found.push_back(std::move(*directory));
  }
  return found;
}

std::vector<Document> ListDocuments(const FileSystem& files, const ExchangeDirectory& directory,
                                    const std::vector<std::string>& except) {
  Lister lister(files, except);
  lister.Folder(directory.Path(), {});
  return lister.Take();
}

}  // namespace tessel::sender
