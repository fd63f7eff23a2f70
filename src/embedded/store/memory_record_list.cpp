#include "embedded/store/memory_record_list.h"

#include <algorithm>

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
  columns_.push_back({name, length, typeCode, {}});
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

MemoryRecordList::Cell MemoryRecordList::CellOf(const Value& value) {
  if (value.IsNull()) return {};
  if (value.IsText() || value.IsDate()) return std::make_unique<const std::string>(value.AsText());
  if (value.IsBoolean()) return value.AsBoolean();
  if (value.IsDouble()) return value.AsDouble();
  return value.AsInt32();
}

Value MemoryRecordList::ValueOf(const Cell& cell) {
  if (const auto* number = std::get_if<std::int32_t>(&cell)) return Value(*number);
  if (const auto* text = std::get_if<std::unique_ptr<const std::string>>(&cell)) return Value(**text);
  if (const auto* boolean = std::get_if<bool>(&cell)) return Value(*boolean);
  if (const auto* real = std::get_if<double>(&cell)) return Value(*real);
  return {};
}

Value MemoryRecordList::GetValue(int column, int row) const {
  if (column < 0 || column >= ColumnCount() || row < 0 || row >= RowCount()) ThrowOutside();
  const std::vector<Cell>& cells = columns_[static_cast<std::size_t>(column)].cells;
  const auto position = static_cast<std::size_t>(row);
  return position < cells.size() ? ValueOf(cells[position]) : Value();
}

// A list for which the memory does not suffice stays as it was: cells beyond the last row do not count.
void MemoryRecordList::SetValue(int column, int row, const Value& value) {
  if (row < 0) ThrowOutside();
  Cell cell = CellOf(Converted(value, ColumnAt(column).typeCode));
  std::vector<Cell>& cells = columns_[static_cast<std::size_t>(column)].cells;
  const auto position = static_cast<std::size_t>(row);
  if (position >= cells.size()) cells.resize(position + 1);
  cells[position] = std::move(cell);
  rows_ = std::max(rows_, position + 1);
}

void MemoryRecordList::AppendRow(const std::vector<Value>& values) {
  std::vector<Cell> row;
  row.reserve(values.size());
  for (const Value& value : values)
    row.push_back(CellOf(Converted(value, ColumnAt(static_cast<int>(row.size())).typeCode)));
  for (std::size_t column = 0; column < row.size(); ++column)
    columns_[column].cells.resize(rows_ + 1);
  for (std::size_t column = 0; column < row.size(); ++column)
    columns_[column].cells[rows_] = std::move(row[column]);
  ++rows_;
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
