// The record lists that the host hands over after a copy, with the indexes that the structure file needs.
#pragma once

#include <exception>
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
  // The lists of the last copy; either may be nothing. Set rebuilds the indexes at the next look-up.
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

 private:
  void IndexFiles() const;
  void IndexLinks() const;

  struct FileEntry {
    int firstRow = -1;
    int copied = 0;
  };
  PcRecordListPtr files_;
  PcRecordListPtr links_;
  mutable bool filesIndexed_ = false;
  mutable bool linksIndexed_ = false;
  mutable std::unordered_map<ObjectKey, FileEntry> fileEntries_;
  mutable std::exception_ptr fileError_;  // what ended the indexing of the files
  mutable std::vector<int> linkColumns_;  // in the order of the members of CopiedLink; empty until asked for
  mutable std::unordered_map<ObjectKey, std::vector<int>> linksFrom_;
  mutable std::exception_ptr linkError_;  // the same for the links
};

}  // namespace tessel
