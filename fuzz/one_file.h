// A file system that is one file in memory, whatever its path.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/error.h"
#include "platform/file_system.h"

namespace tessel::fuzz {

class OneFile : public FileSystem {
 public:
  std::string bytes;

  bool FileExists(const std::string&) const override { return true; }
  bool FolderExists(const std::string&) const override { return true; }
  void CreateFolder(const std::string&) override { Refuse(); }
  void CreateFolders(const std::string&) override { Refuse(); }
  void DeleteFolder(const std::string&) override { Refuse(); }
  void Move(const std::string&, const std::string&) override { Refuse(); }
  void DeleteFile(const std::string&) override { Refuse(); }
  bool CopyFile(const std::string&, const std::string&, bool, const CopyProgress&) override { Refuse(); }
  void CopyFolderContents(const std::string&, const std::string&, const std::function<void()>&) override {
    Refuse();
  }
  std::vector<std::string> ListFiles(const std::string&) const override { Refuse(); }
  std::vector<std::string> ListFolders(const std::string&) const override { Refuse(); }
  bool IsReadOnly(const std::string&) const override { return false; }
  void SetReadOnly(const std::string&, bool) override { Refuse(); }
  std::string ReadBytes(const std::string&) const override { return bytes; }
  void ReadLines(const std::string&, const std::function<bool(std::string_view line)>& line) const override {
    for (std::string_view rest = bytes; !rest.empty();) {
      const auto end = rest.find('\n');
      std::string_view text = rest.substr(0, end);
      if (end != std::string_view::npos && text.ends_with('\r')) text.remove_suffix(1);
      if (!line(text)) return;
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
  }
  void WriteBytes(const std::string&, std::string_view content) override { bytes = content; }
  void WriteStream(const std::string&, const std::function<void(const ByteSink& sink)>& produce) override {
    bytes.clear();
    produce([this](std::string_view piece) { bytes += piece; });
  }
  void AppendBytes(const std::string&, std::string_view content) override { bytes += content; }
  void MakeDurable(const std::string&) override { Refuse(); }
  void SyncFolder(const std::string&) override { Refuse(); }
  std::unique_ptr<HeldFile> Hold(const std::string&, bool) override { Refuse(); }
  std::string NativePath(const std::string& path) const override { return path; }

 private:
  [[noreturn]] static void Refuse() { throw RuntimeError(5, "not wanted here"); }
};

}  // namespace tessel::fuzz
