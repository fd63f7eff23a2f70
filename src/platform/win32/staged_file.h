// A file that is written under a temporary name beside its place, flushed, and renamed.
#pragma once

#include <string>
#include <string_view>

#include "platform/win32/win32_error.h"

namespace tessel::windows {

class StagedFile {
 public:
  // `target` is the final name, `path` what errors show.
  StagedFile(std::wstring target, std::string path);
  // Without Commit nothing is left.
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  [[nodiscard]] HANDLE Get() const { return file_.Get(); }
  void Write(std::string_view bytes);
  // Waits until the content is on the disk.
  void Flush();
  // Attributes and time of write as another file has them.
  void TakeAttributes(const BY_HANDLE_FILE_INFORMATION& information);
  // Gives the file its name. Error 58 when the name is taken and may not be replaced.
  void Commit(bool replace);

 private:
  std::wstring target_;
  std::wstring temporary_;
  std::string path_;
  Handle file_;
  DWORD attributes_ = 0;
  bool committed_ = false;
};

// Writes all bytes. Error as the file system's.
void WriteAll(HANDLE file, std::string_view bytes, const char* step, const std::string& path);

}  // namespace tessel::windows
