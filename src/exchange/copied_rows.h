// The record lists that the host hands over after a copy, with the indexes that the structure file needs, and
// those of the whole export, which its record links.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "host/object_key.h"
#include "host/record_list.h"

namespace tessel {

// A row of the copied-links list.
struct CopiedLink {
  ClassId linkClass = 0;
  ObjectKey first;
  ObjectKey second;
  std::int32_t direction = 0;  // "VRK_DIRECTION"
};

// "OPERATION_ID" of a row whose file was copied.
inline constexpr int kFileCopied = 6;
// Whether an "OPERATION_ID" says so; one without value does not. Error 13 for text that is no number.
[[nodiscard]] bool IsFileCopied(const Value& operation);

class CopiedRows {
 public:
  // The lists of the last copy; either may be nothing. Set builds the indexes and raises nothing: a row that
  // cannot be read ends its index, and raises its error when something beyond it is asked for.
  [[nodiscard]] const PcRecordListPtr& Files() const { return files_; }
  [[nodiscard]] const PcRecordListPtr& Links() const { return links_; }
  void SetFiles(PcRecordListPtr files);
  void SetLinks(PcRecordListPtr links);

  // First row of the files list with the key, -1 when there is none. Error 91 without a list; a row whose ids
  // cannot be read raises its error for keys that do not stand above it.
  [[nodiscard]] int FindFileRow(const ObjectKey& key) const;
  // Number of rows of the key whose file was copied. Errors as the list raises them; 0 without a list.
  [[nodiscard]] int CopiedCount(const ObjectKey& key) const;
  // Number of rows of the links list; 0 without a list.
  [[nodiscard]] int LinkCount() const;
  // The link in a row. Errors as the list raises them.
  [[nodiscard]] CopiedLink Link(int row) const;
  // Rows of the links whose first end is the key, ascending, as far as first ends can be read; empty without
  // a list.
  [[nodiscard]] const std::vector<int>& LinksFrom(const ObjectKey& key) const;
  // Raises the error of the first row whose first end cannot be read.
  void CheckLinks() const;

  // The files lists of all roots of this export so far, in their order. They are the lists of the copies
  // themselves, and are not changed any more.
  [[nodiscard]] const std::vector<PcRecordListPtr>& Exported() const { return exported_; }
  // Adds the list of the last copy, which is there.
  void AddToExport() { exported_.push_back(files_); }
  // Whether the list of the last copy is among them.
  [[nodiscard]] bool IsExported() const { return !exported_.empty() && exported_.back() == files_; }
  void StartExport() { exported_.clear(); }

 private:
  struct FileEntry {
    int firstRow = -1;
    int copied = 0;
  };
  template <class Entry>
  struct Index {
    std::unordered_map<ObjectKey, Entry> entries;
    int rows = 0;        // those that could be read
    bool whole = false;  // all of them
  };
  void IndexFiles();
  void IndexLinks();
  void CheckFiles() const;

  PcRecordListPtr files_;
  PcRecordListPtr links_;
  Index<FileEntry> fileIndex_;
  Index<std::vector<int>> linkIndex_;
  std::array<int, 6> linkColumns_{};  // in the order of the members of CopiedLink; -1 for one that is missing
  std::vector<PcRecordListPtr> exported_;
};

}  // namespace tessel
