// The record list of the embedded host: typed cells in memory, columns found by name in constant time.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "embedded/model/text_map.h"
#include "host/record_list.h"
#include "host/type_codes.h"
#include "platform/file_system.h"

namespace tessel::embedded {

class MemoryRecordList final : public PcRecordList {
 public:
  // The file system serves WriteToFile and outlives the list.
  explicit MemoryRecordList(FileSystem& files) : files_(files) {}

  using PcRecordList::GetValue;
  using PcRecordList::SetValue;
  // A type code that is no ColumnType makes a column that takes every kind of value as it is.
  void AddColumn(const std::string& name, int length, int typeCode) override;
  void AddColumn(const std::string& name, ColumnType type);
  [[nodiscard]] int ColumnCount() const override { return static_cast<int>(columns_.size()); }
  [[nodiscard]] int RowCount() const override { return static_cast<int>(rows_); }
  [[nodiscard]] std::string ColumnName(int column) const override;
  [[nodiscard]] int ColumnLength(int column) const override;
  [[nodiscard]] int ColumnTypeCode(int column) const override;
  [[nodiscard]] int FindColumn(std::string_view name) const override;
  [[nodiscard]] Value GetValue(int column, int row) const override;
  void SetValue(int column, int row, const Value& value) override;
  // UTF-8: the title, then one line a cell. Missing folders of the path are made.
  void WriteToFile(const std::string& title, const std::string& path) const override;

  // Appends a row; the cells stand in column order, trailing ones may be left out.
  void AppendRow(const std::vector<Value>& values);

 private:
  // A value in less than half of its room: lists of a hundred thousand rows are kept twice during an export.
  using Cell = std::variant<std::monostate, std::int32_t, bool, double, std::unique_ptr<const std::string>>;
  struct Column {
    std::string name;
    int length;
    int typeCode;
    std::vector<Cell> cells;  // trailing ones that were never set may be missing
  };
  [[nodiscard]] static Cell CellOf(const Value& value);
  [[nodiscard]] static Value ValueOf(const Cell& cell);
  [[nodiscard]] const Column& ColumnAt(int column) const;

  FileSystem& files_;
  std::vector<Column> columns_;
  TextMap<int> positions_;
  std::size_t rows_ = 0;
};

}  // namespace tessel::embedded
