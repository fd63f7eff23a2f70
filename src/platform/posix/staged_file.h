// A file that is written without a name, or under a temporary one, and gets its own in one step.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/posix/posix_error.h"

namespace tessel::posix {

// Where a file is written until it is committed.
enum class Staging {
  kAside,    // without a name, which a killed process cannot leave behind; else under a temporary name
  kInPlace,  // under its own name when that is free; for folders that are themselves not final yet
};

class StagedFile {
 public:
  // Makes the file. `folder` is an open folder, which outlives the object, or AT_FDCWD; `name` may lead
  // through further folders. `path` is the final path as errors show it. Error 76 when the folder is missing.
  StagedFile(int folder, std::string name, std::string path, mode_t mode, Staging staging = Staging::kAside);
  // Removes the file when it was not committed.
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  [[nodiscard]] int Get() const { return file_.Get(); }
  void Write(std::string_view bytes);
  // Waits until the content is on the disk.
  void Flush();
  // Gives the file its name. Error 58 when the name is taken and may not be replaced.
  void Commit(bool replace);

 private:
  void Create(mode_t mode, Staging staging);
  [[nodiscard]] bool CreateAt(const std::string& name, mode_t mode);
  [[nodiscard]] bool CreateUnnamed(mode_t mode);
  [[nodiscard]] int LinkAt(const std::string& name) const;
  void NameUnnamed(bool replace);
  [[nodiscard]] std::string TemporaryName(int number) const;

  int folder_;
  std::string name_;
  std::string path_;
  std::string standsAt_;  // where the file can be seen; empty while it has no name
  FileDescriptor file_;
  bool committed_ = false;
};

}  // namespace tessel::posix
