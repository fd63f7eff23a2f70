// The journal of one export: a small file beside its exchange directory that says which temporary directories
// the export makes, and which of them are about to get their final names. The living process holds it, so
// that another one knows when to leave the directories alone, and when to put in order what a dead one left.
//
// One line a fact, its parts separated by tabs, "%", tab and line ends in them as "%" and two hexadecimal
// digits:
//   made <directory>                  a temporary directory is about to be made; or what was written of it is
//                                     no longer so
//   recorded <directory> <class id> <object id>
//                                     its data exchange object stands, the directory is not complete yet
//   ready <directory> <prefix> <mark> it is complete; when the unit of work of the mark was committed
//   (always,
//                                     when the mark is empty) it gets its final name
// Directories are names beside the journal. A last line without its end was being written when the process
// died, and counts as not written.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/object_key.h"
#include "platform/file_system.h"

namespace tessel {

class ExportJournal {
 public:
  struct Entry {
    std::string directory;  // its path
    bool ready = false;
    std::string prefix;
    std::string mark;
    ObjectKey record;  // 0 and 0 when none stands without the mark
  };

  // "<directory>.journal".
  [[nodiscard]] static std::string PathOf(const std::string& directory);
  // Whether a name in an exchange path is that of a journal.
  [[nodiscard]] static bool IsName(const std::string& name);

  // Makes and holds the journal of a new export. Error 58 when there is one: an export of that name runs, or
  // died.
  [[nodiscard]] static std::unique_ptr<ExportJournal> Begin(FileSystem& files, const std::string& directory);
  // Takes over the journal at a path; nothing when its process lives, or when it is gone.
  [[nodiscard]] static std::unique_ptr<ExportJournal> TakeOver(FileSystem& files, const std::string& path);

  void Making(const std::string& directory);
  void Recorded(const std::string& directory, const ObjectKey& record);
  void Ready(const std::string& directory, const std::string& prefix, const std::string& mark);
  // One entry a directory, in the order in which they were made. Lines that say nothing, or that name no
  // temporary directory beside the journal, are left out.
  [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }
  // Deletes the journal: no temporary directory stands any more.
  void Close() { file_->Delete(); }

 private:
  ExportJournal(std::string path, std::unique_ptr<HeldFile> file)
      : path_(std::move(path)), file_(std::move(file)) {}
  void Write(const std::vector<std::string>& parts);
  void Take(const std::vector<std::string>& parts);
  Entry& EntryOf(const std::string& directory);

  std::string path_;
  std::unique_ptr<HeldFile> file_;
  std::vector<Entry> entries_;
};

// Whether a name is one that exports give to their temporary directories.
[[nodiscard]] bool IsTemporaryExportName(const std::string& name);

}  // namespace tessel
