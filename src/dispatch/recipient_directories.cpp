#include "dispatch/recipient_directories.h"

#include "messages/guard.h"

namespace tessel {
namespace {

void DeleteQuietly(Trace& trace, FileSystem& files, const std::string& path) {
  GuardedRun(
      trace, "Error while deleting a directory of the dispatch: " + path,
      [&] {
        if (files.FolderExists(path)) files.DeleteFolder(path);
      },
      ProblemKind::kAside);
}

}  // namespace

BackupDirectory::~BackupDirectory() {
  if (filled_) DeleteQuietly(trace_, files_, path_);
}

void BackupDirectory::FillFrom(const std::string& directory) {
  journal_.Making(path_);
  files_.CreateFolder(path_);
  filled_ = true;
  Copy(directory, path_);
}

void BackupDirectory::Copy(const std::string& from, const std::string& to) {
  files_.CopyFolderContents(from, to, [this] { pauser_.Sleep(std::chrono::milliseconds{1}); });
}

void BackupDirectory::MoveTo(const std::string& directory) {
  files_.Move(path_, directory);
  filled_ = false;
}

void BackupDirectory::Delete() {
  if (filled_ && files_.FolderExists(path_)) files_.DeleteFolder(path_);
  filled_ = false;
}

UnfinishedDirectory::~UnfinishedDirectory() {
  if (made_) DeleteQuietly(trace_, files_, path_);
}

void UnfinishedDirectory::Fill(BackupDirectory& backup, bool last) {
  journal_.Making(path_);
  if (last) {
    backup.MoveTo(path_);
    made_ = true;
  } else {
    files_.CreateFolder(path_);
    made_ = true;
    backup.CopyTo(path_);
  }
}

}  // namespace tessel
