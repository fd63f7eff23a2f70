// The temporary directories of a dispatch: the backup of the first recipient's directory, and those of the
// later recipients. Each stands in the export's journal before it is made, and goes with its scope.
#pragma once

#include <string>

#include "config/services.h"
#include "exchange/export_journal.h"

namespace tessel {

// The copy of the first recipient's directory from which the later ones start. It goes when the dispatch
// ends, whichever way, so that no copy of the files lies about.
class BackupDirectory {
 public:
  BackupDirectory(Services& services, ExportJournal& journal, std::string path)
      : trace_(services.trace),
        files_(services.platform.files),
        pauser_(services.platform.pauser),
        journal_(journal),
        path_(std::move(path)) {}
  BackupDirectory(const BackupDirectory&) = delete;
  BackupDirectory& operator=(const BackupDirectory&) = delete;
  ~BackupDirectory();

  // Errors of the file system; 58 when a directory of that name exists, which is then not this export's.
  void FillFrom(const std::string& directory);
  void CopyTo(const std::string& directory) { Copy(path_, directory); }
  void MoveTo(const std::string& directory);
  void Delete();

 private:
  // Windows are drawn anew meanwhile, as in the dispatch's pauses.
  void Copy(const std::string& from, const std::string& to);

  Trace& trace_;
  FileSystem& files_;
  Pauser& pauser_;
  ExportJournal& journal_;
  std::string path_;
  bool filled_ = false;
};

// A later recipient's directory until it stands under its final name: an error takes it away again, so that
// no half-filled one lies about.
class UnfinishedDirectory {
 public:
  UnfinishedDirectory(Services& services, ExportJournal& journal, std::string path)
      : trace_(services.trace), files_(services.platform.files), journal_(journal), path_(std::move(path)) {}
  UnfinishedDirectory(const UnfinishedDirectory&) = delete;
  UnfinishedDirectory& operator=(const UnfinishedDirectory&) = delete;
  ~UnfinishedDirectory();

  // A directory that is there already is another export's, and mixing the two would send one's files to the
  // other's recipient. The last recipient gets the backup itself, which saves a copy and its deletion.
  void Fill(BackupDirectory& backup, bool last);
  void Keep() { made_ = false; }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  Trace& trace_;
  FileSystem& files_;
  ExportJournal& journal_;
  std::string path_;
  bool made_ = false;
};

}  // namespace tessel
