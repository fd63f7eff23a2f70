#include "exchange/copied_rows.h"

#include "host/error.h"

namespace tessel {
namespace {

int ColumnOf(const PcRecordList& list, const char* name) {
  const int column = list.FindColumn(name);
  if (column < 0) throw HostError(std::string("The record list has no column \"") + name + "\"");
  return column;
}

// The key in two columns of a row.
class KeyColumns {
 public:
  KeyColumns(const PcRecordList& list, const char* classColumn, const char* objectColumn)
      : list_(list), class_(ColumnOf(list, classColumn)), object_(ColumnOf(list, objectColumn)) {}
  [[nodiscard]] ObjectKey At(int row) const {
    return {list_.GetValue(class_, row).AsInt16(), list_.GetValue(object_, row).AsInt32()};
  }

 private:
  const PcRecordList& list_;
  int class_;
  int object_;
};

}  // namespace

bool IsFileCopied(const Value& operation) {
  return !operation.IsNull() && operation.AsInt32() == kFileCopied;
}

void CopiedRows::SetFiles(PcRecordListPtr files) {
  files_ = std::move(files);
  filesIndexed_ = false;
  fileEntries_.clear();
  fileError_ = nullptr;
}

void CopiedRows::SetLinks(PcRecordListPtr links) {
  links_ = std::move(links);
  linksIndexed_ = false;
  linkColumns_.clear();
  linksFrom_.clear();
  linkError_ = nullptr;
}

int CopiedRows::FindFileRow(const ObjectKey& key) const {
  IndexFiles();
  const auto found = fileEntries_.find(key);
  if (found != fileEntries_.end()) return found->second.firstRow;
  if (fileError_) std::rethrow_exception(fileError_);
  return -1;
}

int CopiedRows::CopiedCount(const ObjectKey& key) const {
  if (!files_) return 0;
  IndexFiles();
  if (fileError_) std::rethrow_exception(fileError_);
  const auto found = fileEntries_.find(key);
  return found == fileEntries_.end() ? 0 : found->second.copied;
}

int CopiedRows::LinkCount() const {
  return links_ ? links_->RowCount() : 0;
}

CopiedLink CopiedRows::Link(int row) const {
  const PcRecordList& list = *Required(links_.get(), "copied-links list");
  if (linkColumns_.empty()) {
    std::vector<int> columns;
    for (const char* name :
         {"CLASS_ID", "CLASS_ID1", "OBJECT_ID1", "CLASS_ID2", "OBJECT_ID2", "VRK_DIRECTION"}) {
      columns.push_back(ColumnOf(list, name));
    }
    linkColumns_ = std::move(columns);
  }
  const auto cell = [&](std::size_t column) { return list.GetValue(linkColumns_[column], row); };
  return {cell(0).AsInt16(),
          {cell(1).AsInt16(), cell(2).AsInt32()},
          {cell(3).AsInt16(), cell(4).AsInt32()},
          cell(5).AsInt32()};
}

const std::vector<int>& CopiedRows::LinksFrom(const ObjectKey& key) const {
  static const std::vector<int> kNone;
  IndexLinks();
  const auto found = linksFrom_.find(key);
  return found == linksFrom_.end() ? kNone : found->second;
}

void CopiedRows::CheckLinks() const {
  IndexLinks();
  if (linkError_) std::rethrow_exception(linkError_);
}

void CopiedRows::IndexFiles() const {
  const PcRecordList& list = *Required(files_.get(), "copied-files list");
  if (filesIndexed_) return;
  filesIndexed_ = true;
  try {
    const int rows = list.RowCount();
    if (rows == 0) return;  // an empty list may have no columns
    const KeyColumns keys(list, "CLASS_ID", "OBJECT_ID");
    const int operation = list.FindColumn("OPERATION_ID");
    for (int row = 0; row < rows; ++row) {
      FileEntry& entry = fileEntries_[keys.At(row)];
      if (entry.firstRow < 0) entry.firstRow = row;
      if (operation >= 0 && IsFileCopied(list.GetValue(operation, row))) ++entry.copied;
    }
  } catch (...) {
    fileError_ = std::current_exception();
  }
}

void CopiedRows::IndexLinks() const {
  if (linksIndexed_ || !links_) return;
  linksIndexed_ = true;
  try {
    const int rows = links_->RowCount();
    if (rows == 0) return;  // an empty list may have no columns
    const KeyColumns firsts(*links_, "CLASS_ID1", "OBJECT_ID1");
    for (int row = 0; row < rows; ++row)
      linksFrom_[firsts.At(row)].push_back(row);
  } catch (...) {
    linkError_ = std::current_exception();
  }
}

}  // namespace tessel
