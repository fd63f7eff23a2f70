#include "embedded/store/memory_record_list.h"

#include "host/error.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

struct TypeDefault {
  ColumnType type;
  int length;
};
constexpr TypeDefault kLengths[] = {{ColumnType::kText, 255},
                                    {ColumnType::kInteger, 2},
                                    {ColumnType::kLong, 4},
                                    {ColumnType::kDouble, 8},
                                    {ColumnType::kBoolean, 2}};

Value Converted(const Value& value, int typeCode) {
  if (value.IsNull()) return value;
  switch (static_cast<ColumnType>(typeCode)) {
    case ColumnType::kText:
      return value.IsText() ? value : Value(value.AsText());
    case ColumnType::kInteger:
      return Value(value.AsInt16());
    case ColumnType::kLong:
      return Value(value.AsInt32());
    case ColumnType::kDouble:
      return Value(value.AsDouble());
    case ColumnType::kBoolean:
      return Value(value.AsBoolean());
  }
  return value;
}

[[noreturn]] void ThrowOutside() {
  throw RuntimeError(error_number::kSubscriptOutOfRange, "Subscript out of range in a record list");
}

}  // namespace

void MemoryRecordList::AddColumn(const std::string& name, int length, int typeCode) {
  if (positions_.contains(name)) throw HostError("The record list has a column \"" + name + "\" already");
  columns_.push_back({name, length, typeCode});
  try {
    positions_.emplace(name, ColumnCount() - 1);
  } catch (...) {
    columns_.pop_back();
    throw;
  }
}

void MemoryRecordList::AddColumn(const std::string& name, ColumnType type) {
  for (const TypeDefault& entry : kLengths) {
    if (entry.type == type) AddColumn(name, entry.length, static_cast<int>(type));
  }
}

const MemoryRecordList::Column& MemoryRecordList::ColumnAt(int column) const {
  if (column < 0 || column >= ColumnCount()) ThrowOutside();
  return columns_[static_cast<std::size_t>(column)];
}

std::string MemoryRecordList::ColumnName(int column) const {
  return ColumnAt(column).name;
}

int MemoryRecordList::ColumnLength(int column) const {
  return ColumnAt(column).length;
}

int MemoryRecordList::ColumnTypeCode(int column) const {
  return ColumnAt(column).typeCode;
}

int MemoryRecordList::FindColumn(std::string_view name) const {
  const auto found = positions_.find(name);
  return found == positions_.end() ? -1 : found->second;
}

Value MemoryRecordList::GetValue(int column, int row) const {
  if (column < 0 || column >= ColumnCount() || row < 0 || row >= RowCount()) ThrowOutside();
  const auto& cells = rows_[static_cast<std::size_t>(row)];
  const auto position = static_cast<std::size_t>(column);
  return position < cells.size() ? cells[position] : Value();
}

void MemoryRecordList::SetValue(int column, int row, const Value& value) {
  if (row < 0) ThrowOutside();
  Value converted = Converted(value, ColumnAt(column).typeCode);
  const auto rowPosition = static_cast<std::size_t>(row);
  const auto position = static_cast<std::size_t>(column);
  if (rowPosition >= rows_.size()) {
    // The row is made before the list grows, so that a list for which the memory does not suffice stays as it
    // was.
    std::vector<Value> cells(columns_.size());
    cells[position] = std::move(converted);
    rows_.resize(rowPosition + 1);
    rows_[rowPosition] = std::move(cells);
    return;
  }
  auto& cells = rows_[rowPosition];
  if (position >= cells.size()) cells.resize(columns_.size());
  cells[position] = std::move(converted);
}

void MemoryRecordList::AppendRow(const std::vector<Value>& cells) {
  std::vector<Value> row;
  row.reserve(cells.size());
  for (const Value& cell : cells)
    row.push_back(Converted(cell, ColumnAt(static_cast<int>(row.size())).typeCode));
  rows_.push_back(std::move(row));
}

// For people who look for a fault: written at once, without the care for a crash that costs milliseconds.
void MemoryRecordList::WriteToFile(const std::string& title, const std::string& path) const {
  if (const std::string folder = paths::Parent(path); !folder.empty()) files_.CreateFolders(folder);
  std::string text = title + "\r\n";
  for (int row = 0; row < RowCount(); ++row) {
    text += "     ------------\r\n";
    for (int column = 0; column < ColumnCount(); ++column) {
      text += ColumnName(column) + ":   " + GetValue(column, row).AsText() + "\r\n";
    }
  }
  if (files_.FileExists(path)) files_.DeleteFile(path);
  files_.AppendBytes(path, text);
}

}  // namespace tessel::embedded
