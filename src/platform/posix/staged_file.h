// A file written under a temporary name and put under its final name in one step.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/posix/posix_error.h"

namespace tessel::posix {

// Where a file is written until it is committed.
enum class Staging {
  kAside,    // under a temporary name
  kInPlace,  // under its own name when that is free; for folders that are themselves not final yet
};

class StagedFile {
 public:
  // Makes the temporary file in an open folder, which outlives the object. `path` is the final path as errors
  // show it, `name` its name in the folder.
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
  int folder_;
  std::string name_;
  std::string path_;
  std::string temporaryName_;
  FileDescriptor file_;
  bool committed_ = false;
};

}  // namespace tessel::posix
