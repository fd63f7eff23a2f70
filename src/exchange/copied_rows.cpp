#include "exchange/copied_rows.h"

#include "host/error.h"
#include "host/names.h"
#include "messages/guard.h"

namespace tessel {
namespace {

constexpr std::array<const char*, 6> kLinkColumns = {attribute::kClassId,   attribute::kClassId1,
                                                     attribute::kObjectId1, attribute::kClassId2,
                                                     attribute::kObjectId2, attribute::kDirection};

[[noreturn]] void ThrowNoColumn(const char* name) {
  throw HostError(std::string("The record list has no column \"") + name + "\"");
}

int ColumnOf(const PcRecordList& list, const char* name) {
  const int column = list.FindColumn(name);
  if (column < 0) ThrowNoColumn(name);
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

KeyColumns FirstEnds(const PcRecordList& list) {
  return {list, attribute::kClassId1, attribute::kObjectId1};
}

// What the index needs of the files list.
class FileColumns {
 public:
  explicit FileColumns(const PcRecordList& list)
      : list_(list),
        keys_(list, attribute::kClassId, attribute::kObjectId),
        operation_(list.FindColumn(attribute::kOperationId)) {}
  [[nodiscard]] ObjectKey Key(int row) const { return keys_.At(row); }
  [[nodiscard]] bool Copied(int row) const {
    return operation_ >= 0 && IsFileCopied(list_.GetValue(operation_, row));
  }

 private:
  const PcRecordList& list_;
  KeyColumns keys_;
  int operation_;
};

// A list that fails once only is no list to go by either.
[[noreturn]] void ThrowUnread(int row) {
  throw HostError("Row " + std::to_string(row + 1) + " of a copied list could not be read");
}

}  // namespace

bool IsFileCopied(const Value& operation) {
  return !operation.IsNull() && operation.AsInt32() == kFileCopied;
}

void CopiedRows::SetFiles(PcRecordListPtr files) {
  files_ = std::move(files);
  fileIndex_ = {};
  if (files_) IgnoringErrors([this] { IndexFiles(); });
}

void CopiedRows::SetLinks(PcRecordListPtr links) {
  links_ = std::move(links);
  linkIndex_ = {};
  if (links_) IgnoringErrors([this] { IndexLinks(); });
}

int CopiedRows::FindFileRow(const ObjectKey& key) const {
  static_cast<void>(Required(files_.get(), "copied-files list"));
  const auto found = fileIndex_.entries.find(key);
  if (found != fileIndex_.entries.end() && found->second.firstRow >= 0) return found->second.firstRow;
  CheckFiles();
  return -1;
}

int CopiedRows::CopiedCount(const ObjectKey& key) const {
  if (!files_) return 0;
  CheckFiles();
  const auto found = fileIndex_.entries.find(key);
  return found == fileIndex_.entries.end() ? 0 : found->second.copied;
}

int CopiedRows::LinkCount() const {
  return links_ ? links_->RowCount() : 0;
}

CopiedLink CopiedRows::Link(int row) const {
  const PcRecordList& list = *Required(links_.get(), "copied-links list");
  const auto cell = [&](std::size_t column) {
    if (linkColumns_[column] < 0) ThrowNoColumn(kLinkColumns[column]);
    return list.GetValue(linkColumns_[column], row);
  };
  return {cell(0).AsInt16(),
          {cell(1).AsInt16(), cell(2).AsInt32()},
          {cell(3).AsInt16(), cell(4).AsInt32()},
          cell(5).AsInt32()};
}

const std::vector<int>& CopiedRows::LinksFrom(const ObjectKey& key) const {
  static const std::vector<int> kNone;
  const auto found = linkIndex_.entries.find(key);
  return found == linkIndex_.entries.end() ? kNone : found->second;
}

void CopiedRows::CheckLinks() const {
  if (!links_ || linkIndex_.whole) return;
  static_cast<void>(FirstEnds(*links_).At(linkIndex_.rows));
  ThrowUnread(linkIndex_.rows);
}

void CopiedRows::CheckFiles() const {
  if (fileIndex_.whole) return;
  const FileColumns columns(*files_);
  static_cast<void>(columns.Key(fileIndex_.rows));
  static_cast<void>(columns.Copied(fileIndex_.rows));
  ThrowUnread(fileIndex_.rows);
}

void CopiedRows::IndexFiles() {
  const int rows = files_->RowCount();
  if (rows > 0) {  // an empty list may have no columns
    const FileColumns columns(*files_);
    for (int row = 0; row < rows; ++row) {
      FileEntry& entry = fileIndex_.entries[columns.Key(row)];
      if (entry.firstRow < 0) entry.firstRow = row;
      if (columns.Copied(row)) ++entry.copied;
      fileIndex_.rows = row + 1;
    }
  }
  fileIndex_.whole = true;
}

void CopiedRows::IndexLinks() {
  for (std::size_t column = 0; column < kLinkColumns.size(); ++column)
    linkColumns_[column] = links_->FindColumn(kLinkColumns[column]);
  const int rows = links_->RowCount();
  if (rows > 0) {
    const KeyColumns firsts = FirstEnds(*links_);
    for (int row = 0; row < rows; ++row) {
      linkIndex_.entries[firsts.At(row)].push_back(row);
      linkIndex_.rows = row + 1;
    }
  }
  linkIndex_.whole = true;
}

}  // namespace tessel
