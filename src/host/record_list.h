// PcRecordList: the host's table of named columns and rows numbered from 0.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/object_key.h"
#include "host/value.h"

namespace tessel {

class PcRecordList {
 public:
  virtual ~PcRecordList() = default;

  // Length in bytes and type code as callers pass them (see ColumnType). Error: HostError when the list has
  // a column of that name.
  virtual void AddColumn(const std::string& name, int length, int typeCode) = 0;
  [[nodiscard]] virtual int ColumnCount() const = 0;
  [[nodiscard]] virtual int RowCount() const = 0;
  [[nodiscard]] virtual std::string ColumnName(int column) const = 0;
  [[nodiscard]] virtual int ColumnLength(int column) const = 0;
  [[nodiscard]] virtual int ColumnTypeCode(int column) const = 0;
  // Position of a column by its exact name, -1 when there is none.
  [[nodiscard]] virtual int FindColumn(std::string_view name) const = 0;

  // A cell; Null when it was never set. Error 9 outside the table.
  [[nodiscard]] virtual Value GetValue(int column, int row) const = 0;
  // Sets a cell, converted to the column's type; rows up to it come into being. Errors: 9 no such column or
  // negative row, 6 and 13 as in Value.
  virtual void SetValue(int column, int row, const Value& value) = 0;

  // Writes the list to a text file under a title. Error: RuntimeError with the file system's number.
  virtual void WriteToFile(const std::string& title, const std::string& path) const = 0;

  // By column name. Error: HostError naming the missing column; otherwise as above.
  [[nodiscard]] Value GetValue(std::string_view column, int row) const;
  void SetValue(std::string_view column, int row, const Value& value);
  [[nodiscard]] bool HasColumn(std::string_view name) const { return FindColumn(name) >= 0; }

  // "CLASS_ID" and "OBJECT_ID" of a row. Errors as GetValue and as Value has them for cells that
  // hold no number.
  [[nodiscard]] ObjectKey KeyOfRow(int row) const;
};

using PcRecordListPtr = std::shared_ptr<PcRecordList>;

}  // namespace tessel
