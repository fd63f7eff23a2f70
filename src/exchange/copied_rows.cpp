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

void CopiedRows::SetFiles(PcRecordListPtr files) {
  files_ = std::move(files);
  filesIndexed_ = false;
  fileEntries_.clear();
  fileError_ = nullptr;
}

void CopiedRows::SetLinks(PcRecordListPtr links) {
  links_ = std::move(links);
  linksIndexed_ = false;
  allLinks_.clear();
  linksFrom_.clear();
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

const std::vector<CopiedLink>& CopiedRows::AllLinks() const {
  IndexLinks();
  return allLinks_;
}

const std::vector<int>& CopiedRows::LinksFrom(const ObjectKey& key) const {
  static const std::vector<int> kNone;
  IndexLinks();
  const auto found = linksFrom_.find(key);
  return found == linksFrom_.end() ? kNone : found->second;
}

void CopiedRows::IndexFiles() const {
  const PcRecordList& list = *Required(files_.get(), "copied-files list");
  if (filesIndexed_) return;
  filesIndexed_ = true;
  try {
    const KeyColumns keys(list, "CLASS_ID", "OBJECT_ID");
    const int rows = list.RowCount();
    const int operation = list.FindColumn("OPERATION_ID");
    for (int row = 0; row < rows; ++row) {
      FileEntry& entry = fileEntries_[keys.At(row)];
      if (entry.firstRow < 0) entry.firstRow = row;
      if (operation >= 0 && list.GetValue(operation, row).AsInt16() == kFileCopied) ++entry.copied;
    }
  } catch (...) {
    fileError_ = std::current_exception();
  }
}

void CopiedRows::IndexLinks() const {
  if (linksIndexed_ || !links_) return;
  const PcRecordList& list = *links_;
  const int linkClass = ColumnOf(list, "CLASS_ID");
  const int direction = ColumnOf(list, "VRK_DIRECTION");
  const KeyColumns firsts(list, "CLASS_ID1", "OBJECT_ID1");
  const KeyColumns seconds(list, "CLASS_ID2", "OBJECT_ID2");
  const int rows = list.RowCount();
  std::vector<CopiedLink> all;
  std::unordered_map<ObjectKey, std::vector<int>> from;
  for (int row = 0; row < rows; ++row) {
    all.push_back({list.GetValue(linkClass, row).AsInt16(), firsts.At(row), seconds.At(row),
                   list.GetValue(direction, row).AsInt32()});
    from[all.back().first].push_back(row);
  }
  allLinks_ = std::move(all);
  linksFrom_ = std::move(from);
  linksIndexed_ = true;
}

}  // namespace tessel
