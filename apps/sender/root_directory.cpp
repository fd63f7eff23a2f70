#include "sender/root_directory.h"

#include <filesystem>
#include <optional>

#include "platform/paths.h"

namespace tessel::sender {
namespace {

std::string Encoded(const std::string& text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "-._~/:";
  std::string result;
  for (const char c : text) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       kPlain.find(c) != std::string_view::npos;
    if (plain) {
      result += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      result.append(1, '%').append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
  }
  return result;
}

// What stands before the directory's name in a record's path; nothing when it names another one.
std::optional<std::string> ParentIn(const std::string& rootDirectory, const std::string& base) {
  const std::string text = "/" + rootDirectory + "/";
  for (const Place place : {Place::kQueued, Place::kSent, Place::kStopped}) {
    for (const std::string& name : {base + SuffixOf(place), Encoded(base + SuffixOf(place))}) {
      for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
        const auto separates = [&](char c) { return c == '/' || c == '\\'; };
        if (at > 0 && separates(text[at - 1]) && separates(text[at + name.size()]))
          return rootDirectory.substr(0, at < 2 ? 0 : at - 2);
      }
    }
  }
  return std::nullopt;
}

}  // namespace

std::string RootDirectoryText(const ExchangeDirectory& directory, const std::string& subdirectory) {
  return directory.In(subdirectory);
}

std::string FileUrl(const std::string& path) {
  if (path.starts_with('/')) return "file://" + Encoded(path);
  std::string slashes = path;
  for (char& c : slashes)
    c = c == '\\' ? '/' : c;
  return (slashes.starts_with("//") ? "file:" : "file:///") + Encoded(slashes);
}

bool LiesIn(const std::string& rootDirectory, const std::string& base) {
  return ParentIn(rootDirectory, base).has_value();
}

bool BelongsTo(const FileSystem& files, const std::string& rootDirectory,
               const ExchangeDirectory& directory) {
  const auto parent = ParentIn(rootDirectory, directory.base);
  if (!parent) return false;
  if (parent->starts_with("file:")) return true;
  for (const Place place : {Place::kQueued, Place::kSent, Place::kStopped}) {
    const std::string there = paths::Join(*parent, directory.base + SuffixOf(place));
    std::error_code ignored;
    if (files.FolderExists(there) &&
        !std::filesystem::equivalent(files.NativePath(there), files.NativePath(directory.Path()), ignored))
      return false;
  }
  return true;
}

bool IsOfPlace(const std::string& rootDirectory, const ExchangeDirectory& directory, Place place) {
  const std::string text = rootDirectory + "/";
  const std::string name = directory.At(place).Name();
  return text.find(name + "/") != std::string::npos || text.find(name + "\\") != std::string::npos;
}

}  // namespace tessel::sender
